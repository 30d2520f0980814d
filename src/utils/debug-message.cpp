#include "utils/debug-message.h"

QLoggingCategory debug_message("debug.message"); // clazy:exclude=non-pod-global-static
