#pragma once

// What the tests need of the system, and where the systems differ.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

/** A process of this program, with this process at the other end of its input and its output. */
struct ChildProcess
{
    std::intptr_t id;
    std::FILE* input;
    std::FILE* output;
};

ChildProcess startThisProgram(const std::string& argument);

/** Leaves it no time for anything, and returns when it has ended. */
void endAtOnce(const ChildProcess& process);

/** Whether a thread that owns a mutex has to wait for it when it comes with a second handle. */
extern const bool secondHandleContends;

/** Whether a wait for a mutex and once more for the same one fails. */
extern const bool doublesAreRefused;

/** Names of that length are no problem. */
extern const std::size_t longestName;
