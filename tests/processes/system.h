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

/** Leaves it no time for anything. */
void killProgram(const StartedProgram& program);

/** Keeps it from going on, or lets it. */
void stopProgram(const StartedProgram& program, bool isStopped);

/** Waits for its end; 0 if that was in order. */
int exitCodeOf(const StartedProgram& program);

void setVariable(const char* name, const std::string& value);

/** What a participant can do to itself on this system. */
Verbs systemVerbs();
