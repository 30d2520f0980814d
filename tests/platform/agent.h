#pragma once

#include "line-queue.h"
#include "platform/win32.h"

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <thread>
#include <vector>

class ChildProcess;

/** What a call resulted in, and what GetLastError said after it. */
struct Answer
{
    std::uint64_t result;
    std::uint64_t error;

    bool operator==(const Answer& other) const { return result == other.result && error == other.error; }
};

std::ostream& operator<<(std::ostream& stream, const Answer& answer);

// Results of the waits, all of one type.
constexpr std::uint64_t owned = WAIT_OBJECT_0;
constexpr std::uint64_t abandoned = WAIT_ABANDONED;
constexpr std::uint64_t busy = WAIT_TIMEOUT;
constexpr std::uint64_t failed = WAIT_FAILED;

/**
 * Somebody who calls what is tested, one call after the other, as he is told: a thread, of this process or
 * another. To be told and to answer are two things, so that others can act while a call blocks. An answer
 * that never comes is an exception.
 */
class Agent
{
public:
    using Handle = std::uint64_t; ///< a number that agents of one process may share
    using Handles = std::vector<Handle>;

    virtual ~Agent() = default;

    // Handles are closed when the agent ends.
    Answer tryCreate(const std::u16string& name);
    Answer tryOpen(const std::u16string& name);
    Handle create(const std::u16string& name);
    Handle open(const std::u16string& name);
    Answer close(Handle handle);

    void beginTake(Handle handle);
    void beginTakeAll(const Handles& handles);
    std::uint64_t take(Handle handle);
    std::uint64_t takeAll(const Handles& handles);
    std::uint64_t tryTake(Handle handle);
    std::uint64_t tryTakeAll(const Handles& handles);
    Answer takeWithReason(Handle handle);
    Answer tryTakeAllWithReason(const Handles& handles);
    Answer release(Handle handle);
    void releaseAll(const Handles& handles);

    /**
     * For a while takes all handles, adds one to the number in the file, and releases them, again and again.
     * The answer counts how often that succeeded, and how often not.
     */
    void beginTurns(
        std::chrono::milliseconds duration, const Handles& handles, const std::string& file = "-");

    /** The same without waiting and without a file: all handles are free, or it is a failure. */
    void beginAttempts(std::chrono::milliseconds duration, const Handles& handles);

    /**
     * Creates the mutex, takes it, adds one to the number in the file, releases it, closes it and pauses,
     * again and again. The answer counts how often the mutex had not been there, and the failures.
     */
    void beginRace(unsigned rounds, const std::u16string& name, const std::string& file);

    std::chrono::milliseconds processorTime();

    bool hasAnswered() const;
    Answer answer();
    Answer answer(std::chrono::milliseconds limit);

protected:
    void begin(std::string command);
    Answer ask(std::string command);

    /** Whether there is an answer to come. */
    bool isAsked() const { return !m_command.empty(); }

    virtual void send(const std::string& line) = 0;

    std::shared_ptr<LineQueue> m_answers = std::make_shared<LineQueue>();
    std::string m_command;
};

class AgentThread : public Agent
{
public:
    AgentThread();
    ~AgentThread() override;

    /** Whatever it owns. */
    void end();

private:
    void send(const std::string& line) override;

    std::shared_ptr<LineQueue> m_commands = std::make_shared<LineQueue>();
    std::thread m_thread; ///< which keeps its lines, if it outlives this
};

class AgentProcess : public Agent
{
public:
    AgentProcess();
    ~AgentProcess() override;

    /** Starts another process, which answers from now on. The first one only lives, with all that it has. */
    void handOver();

    /** Kills the first one. */
    void kill();

private:
    void send(const std::string& line) override;

    std::unique_ptr<ChildProcess> m_process;
    std::thread m_reader;
};

/** The argument that makes this program the other side of an AgentProcess. */
extern const char* const agentRole;

int serveAsAgentProcess();
