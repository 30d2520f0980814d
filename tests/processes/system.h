#pragma once

// What driving processes takes of the system, and how a participant changes its own surroundings.

#include "processes/participant.h"

#include <cstdint>
#include <cstdio>
#include <string>

/** A process with this one at the other end of its input, and of its output and its log. */
struct StartedProgram
{
    std::intptr_t id;
    std::FILE* input;
    std::FILE* output;
};

StartedProgram startProgram(const std::string& path);

/** "kill" leaves it no time for anything, "stop" keeps it from going on until "go". */
void signalProgram(const StartedProgram& program, const std::string& signal);

/** Waits for its end; 0 if that was in order. */
int exitCodeOf(const StartedProgram& program);

void setVariable(const char* name, const std::string& value);

/** What a participant can do to itself on this system. */
Verbs systemVerbs();
