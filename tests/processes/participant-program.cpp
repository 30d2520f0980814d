#include "processes/scene.h"

const char* const participantProgram = PARTICIPANT;
