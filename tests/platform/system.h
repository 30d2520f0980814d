#pragma once

// What the tests need of the system, and where the systems differ.

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

/** This program, started once more. */
class ChildProcess
{
public:
    enum class Streams {
        Piped, ///< input and output lead here
        Inherited ///< and are those of this process
    };

    explicit ChildProcess(const std::string& role, Streams streams = Streams::Piped);

    /** Closes a piped input, which has to make the other end, and waits for that. */
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    std::FILE* input() const { return m_input; }

    std::FILE* output() const { return m_output; }

    void closeInput();

    /** Leaves it no time for anything, and returns when it has ended. */
    void kill();

    void waitForEnd();

private:
    struct Process;

    std::shared_ptr<Process> m_process; // which may be one of either system
    std::FILE* m_input = nullptr;
    std::FILE* m_output = nullptr;
};

std::chrono::milliseconds processorTimeOfThisProcess();

/** Lets a write to a process that has ended fail, instead of ending this one too. */
void surviveBrokenPipes();

/** Whether a thread that owns a mutex has to wait for it when it comes with a second handle. */
extern const bool secondHandleContends;

/** Whether a wait for a mutex and once more for the same one fails. */
extern const bool doublesAreRefused;

/** Names of that length are no problem. */
extern const std::size_t longestName;
