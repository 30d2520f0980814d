#pragma once

#include "platform/win32.h"
#include "system.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <iosfwd>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/** What a call resulted in, and if it failed, what GetLastError said. */
struct Answer
{
    std::uint64_t result;
    std::uint64_t error;

    bool operator==(const Answer& other) const { return result == other.result && error == other.error; }
};

std::ostream& operator<<(std::ostream& stream, const Answer& answer);

constexpr Answer done { TRUE, 0 };
constexpr Answer owned { WAIT_OBJECT_0, 0 };
constexpr Answer abandoned { WAIT_ABANDONED, 0 };
constexpr Answer busy { WAIT_TIMEOUT, 0 };

/**
 * Somebody who calls what is tested, one call after the other, as he is told: a thread, of this process or
 * another. To be told and to answer are two things, so that others can act while a call blocks. An answer
 * that never comes is an exception.
 */
class Agent
{
public:
    using Numbers = std::vector<std::uint64_t>;
    using Handle = std::uint64_t; ///< a number that agents of one process may share
    using Handles = Numbers;

    virtual ~Agent() = default;

    // Handles are closed when the agent ends.
    Answer tryCreate(const std::u16string& name) { return ask("create", { name.begin(), name.end() }); }

    Answer tryOpen(const std::u16string& name) { return ask("open", { name.begin(), name.end() }); }

    Handle create(const std::u16string& name) { return tryCreate(name).result; }

    Handle open(const std::u16string& name) { return tryOpen(name).result; }

    Answer close(Handle handle) { return ask("close", { handle }); }

    void beginTake(const Handles& handles) { begin("wait", with(INFINITE, handles)); }

    Answer take(const Handles& handles) { return ask("wait", with(INFINITE, handles)); }

    Answer tryTake(const Handles& handles) { return ask("wait", with(0, handles)); }

    Answer release(const Handles& handles) { return ask("release", handles); }

    /** Takes the mutexes, and releases them if it got them. */
    void beginPass(const Handles& handles) { begin("pass", with(INFINITE, handles)); }

    Answer pass(const Handles& handles) { return ask("pass", with(INFINITE, handles)); }

    Answer tryPass(const Handles& handles) { return ask("pass", with(0, handles)); }

    /**
     * Does so again and again for some milliseconds, waiting for the mutexes or not. The answer counts how
     * often it got them, and how often not.
     */
    void beginPasses(unsigned duration, DWORD wait, const Handles& handles)
    {
        begin("pass-often", with(duration, with(wait, handles)));
    }

    /** Creates the mutex, takes it, releases it, closes it and pauses, again and again. Counted likewise. */
    void beginRace(std::uint64_t rounds, const std::u16string& name)
    {
        begin("race", with(rounds, { name.begin(), name.end() }));
    }

    /** From now on it is a failure if another one has taken mutexes and meets this one at that place. */
    void meetAt(const std::u16string& name) { ask("meet", { name.begin(), name.end() }); }

    bool hasAnswered() const;
    Answer answer(std::chrono::milliseconds limit = std::chrono::seconds(20));

    /** Leaves whatever it owns. */
    virtual void end() = 0;

private:
    static Numbers with(std::uint64_t first, Numbers others);

    void begin(const std::string& verb, const Numbers& numbers);
    Answer ask(const std::string& verb, const Numbers& numbers);
    virtual std::future<Answer> send(const std::string& line) = 0;

protected:
    std::future<Answer> m_answer; ///< valid until it was given
};

class AgentThread : public Agent
{
public:
    AgentThread();
    ~AgentThread() override;
    void end() override;

private:
    struct Call;

    std::future<Answer> send(const std::string& line) override;

    std::promise<std::unique_ptr<Call>> m_next;
    std::thread m_thread;
};

class AgentProcess : public Agent
{
public:
    AgentProcess();
    ~AgentProcess() override;

    /** Kills it. */
    void end() override;

private:
    std::future<Answer> send(const std::string& line) override;

    ChildProcess m_process;
    bool m_ended = false;
};

/** The argument that makes this program the other side of an AgentProcess. */
extern const char* const agentRole;

int serveAsAgent();

/** A name that nobody else has. */
std::u16string uniqueName();

/**
 * How many rounds fail while processes create, take, release and close one mutex as fast as they can. It is a
 * failure too if that mutex is still there at last.
 */
std::uint64_t failuresOfRace(std::size_t processes, std::uint64_t rounds);
