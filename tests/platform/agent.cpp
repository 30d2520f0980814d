#include "agent.h"

#include "system.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <future>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>

using namespace std::chrono_literals;

const char* const agentRole = "agent";

namespace {

constexpr auto limitOfAnswers = 20s;
constexpr auto limitOfEnds = 5s;
const char* const handOverCommand = "hand-over";

std::string encoded(const std::u16string& text)
{
    std::ostringstream stream;
    for (const char16_t unit : text) {
        stream << static_cast<unsigned>(unit) << ',';
    }
    return stream.str();
}

std::u16string decoded(const std::string& text)
{
    std::istringstream stream(text);
    std::u16string units;
    unsigned unit = 0;
    char comma = 0;
    while (stream >> unit >> comma) {
        units += static_cast<char16_t>(unit);
    }
    return units;
}

LPCWSTR toSystem(const std::u16string& text)
{
    return reinterpret_cast<LPCWSTR>(text.c_str());
}

void addOne(const std::string& file)
{
    unsigned number = 0;
    std::ifstream(file) >> number;
    std::ofstream(file) << number + 1;
}

class Deadline
{
public:
    explicit Deadline(std::chrono::microseconds time)
        : m_time(Clock::now() + time)
    { }

    bool isReached() const { return Clock::now() >= m_time; }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_time;
};

/** Sleeps, and stays awake where that is too short for some system to sleep. */
void pauseFor(std::chrono::microseconds time)
{
    const Deadline end(time);
    std::this_thread::sleep_for(std::chrono::floor<std::chrono::milliseconds>(time));
    while (!end.isReached()) {
        std::this_thread::yield();
    }
}

/** The other side of an agent: what carries the commands out. */
class Servant
{
public:
    using Words = std::istringstream;

    Servant() = default;

    ~Servant()
    {
        for (HANDLE handle : m_open) {
            CloseHandle(handle);
        }
    }

    Servant(const Servant&) = delete;
    Servant& operator=(const Servant&) = delete;

    Answer execute(const std::string& command)
    {
        static const std::map<std::string, Answer (Servant::*)(Words&)> functions {
            { "create", &Servant::create },
            { "open", &Servant::open },
            { "close", &Servant::close },
            { "wait", &Servant::wait },
            { "wait-all", &Servant::waitForAll },
            { "release", &Servant::release },
            { "turns", &Servant::takeTurns },
            { "attempts", &Servant::makeAttempts },
            { "race", &Servant::race },
            { "processor-time", &Servant::tellProcessorTime },
        };
        Words words(command);
        std::string name;
        words >> name;
        return (this->*functions.at(name))(words);
    }

private:
    Answer create(Words& words)
    {
        std::string name;
        words >> name;
        return opened(CreateMutexW(nullptr, FALSE, toSystem(decoded(name))));
    }

    Answer open(Words& words)
    {
        std::string name;
        words >> name;
        return opened(OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, toSystem(decoded(name))));
    }

    Answer opened(HANDLE handle)
    {
        const DWORD error = GetLastError();
        if (handle) {
            m_open.insert(handle);
        }
        return { reinterpret_cast<std::uintptr_t>(handle), error };
    }

    Answer close(Words& words)
    {
        const HANDLE handle = nextHandle(words);
        m_open.erase(handle);
        return answered(static_cast<unsigned>(CloseHandle(handle)));
    }

    Answer wait(Words& words)
    {
        const DWORD milliseconds = nextNumber(words);
        return answered(WaitForSingleObject(nextHandle(words), milliseconds));
    }

    Answer waitForAll(Words& words)
    {
        const DWORD milliseconds = nextNumber(words);
        const std::vector<HANDLE> handles = nextHandles(words);
        return answered(
            WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), TRUE, milliseconds));
    }

    Answer release(Words& words) { return answered(static_cast<unsigned>(ReleaseMutex(nextHandle(words)))); }

    Answer takeTurns(Words& words)
    {
        std::string file;
        words >> file;
        const Deadline end(std::chrono::milliseconds(nextNumber(words)));
        const std::vector<HANDLE> handles = nextHandles(words);
        Answer counted { 0, 0 };
        while (!end.isReached()) {
            const DWORD taken = waitFor(handles, INFINITE);
            if (taken != WAIT_FAILED && file != "-") {
                addOne(file);
            }
            ++(releaseAll(handles) && taken == WAIT_OBJECT_0 ? counted.result : counted.error);
        }
        return counted;
    }

    Answer makeAttempts(Words& words)
    {
        const Deadline end(std::chrono::milliseconds(nextNumber(words)));
        const std::vector<HANDLE> handles = nextHandles(words);
        Answer counted { 0, 0 };
        while (!end.isReached()) {
            const bool taken = waitFor(handles, 0) == WAIT_OBJECT_0;
            ++(taken && releaseAll(handles) ? counted.result : counted.error);
        }
        return counted;
    }

    Answer race(Words& words)
    {
        std::string encodedName;
        std::string file;
        words >> encodedName >> file;
        const std::u16string name = decoded(encodedName);
        const unsigned rounds = nextNumber(words);
        std::minstd_rand random { GetCurrentProcessId() };
        unsigned longestPause = 100;
        Answer counted { 0, 0 };
        for (unsigned round = 0; round < rounds; ++round) {
            const HANDLE handle = CreateMutexW(nullptr, FALSE, toSystem(name));
            const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
            const bool taken = handle && WaitForSingleObject(handle, INFINITE) == WAIT_OBJECT_0;
            if (taken) {
                addOne(file);
            }
            counted.error += taken && ReleaseMutex(handle) && CloseHandle(handle) ? 0 : 1;
            counted.result += existed ? 0 : 1;
            // As long as it takes to have everybody out every other time.
            longestPause = existed ? std::min(longestPause * 2, 50000U) : longestPause / 2 + 1;
            pauseFor(std::chrono::microseconds(random() % longestPause));
        }
        return counted;
    }

    Answer tellProcessorTime(Words& /*words*/)
    {
        return { static_cast<std::uint64_t>(processorTimeOfThisProcess().count()), 0 };
    }

    static DWORD waitFor(const std::vector<HANDLE>& handles, DWORD milliseconds)
    {
        return handles.size() == 1
            ? WaitForSingleObject(handles.front(), milliseconds)
            : WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), TRUE, milliseconds);
    }

    static bool releaseAll(const std::vector<HANDLE>& handles)
    {
        return std::all_of(handles.begin(), handles.end(), ReleaseMutex);
    }

    static Answer answered(std::uint64_t result) { return { result, GetLastError() }; }

    static unsigned nextNumber(Words& words)
    {
        unsigned number = 0;
        words >> number;
        return number;
    }

    static HANDLE nextHandle(Words& words)
    {
        std::uintptr_t number = 0;
        words >> number;
        return reinterpret_cast<HANDLE>(number);
    }

    static std::vector<HANDLE> nextHandles(Words& words)
    {
        std::vector<HANDLE> handles;
        handles.reserve(1); // even none have an address then
        std::uintptr_t number = 0;
        while (words >> number) {
            handles.push_back(reinterpret_cast<HANDLE>(number));
        }
        return handles;
    }

    std::set<HANDLE> m_open;
};

void serve(LineQueue& commands, const std::function<void(const std::string&)>& reply)
{
    Servant servant;
    while (const auto command = commands.pop()) {
        const Answer answer = servant.execute(*command);
        reply(std::to_string(answer.result) + ' ' + std::to_string(answer.error));
    }
}

/** Lets an heir talk for this process, which goes on as long as he does and has nothing to say. */
[[noreturn]] void liveBesideHeir()
{
    ChildProcess heir(agentRole, ChildProcess::Streams::Inherited);
    std::cout << "0 0" << std::endl;
    heir.waitForEnd();
    std::_Exit(EXIT_SUCCESS);
}

void readCommands(LineQueue& commands)
{
    std::string command;
    while (std::getline(std::cin, command)) {
        if (command == handOverCommand) {
            liveBesideHeir();
        }
        commands.push(command);
    }
    commands.close();
}

std::string nextLine(std::FILE* file)
{
    std::string line;
    for (int character = std::fgetc(file); character != EOF && character != '\n';
         character = std::fgetc(file)) {
        line += static_cast<char>(character);
    }
    return line;
}

std::string list(const Agent::Handles& handles)
{
    std::string text;
    for (const Agent::Handle handle : handles) {
        text += ' ' + std::to_string(handle);
    }
    return text;
}

const std::string atOnce = " 0";
const std::string whenever = ' ' + std::to_string(INFINITE);

} // namespace

std::ostream& operator<<(std::ostream& stream, const Answer& answer)
{
    return stream << answer.result << " (error " << answer.error << ')';
}

Answer Agent::tryCreate(const std::u16string& name)
{
    return ask("create " + encoded(name));
}

Answer Agent::tryOpen(const std::u16string& name)
{
    return ask("open " + encoded(name));
}

Agent::Handle Agent::create(const std::u16string& name)
{
    const Answer answer = tryCreate(name);
    if (answer.result == 0) {
        throw std::runtime_error("a mutex was not created: error " + std::to_string(answer.error));
    }
    return answer.result;
}

Agent::Handle Agent::open(const std::u16string& name)
{
    const Answer answer = tryOpen(name);
    if (answer.result == 0) {
        throw std::runtime_error("a mutex was not opened: error " + std::to_string(answer.error));
    }
    return answer.result;
}

Answer Agent::close(Handle handle)
{
    return ask("close" + list({ handle }));
}

void Agent::beginTake(Handle handle)
{
    begin("wait" + whenever + list({ handle }));
}

void Agent::beginTakeAll(const Handles& handles)
{
    begin("wait-all" + whenever + list(handles));
}

std::uint64_t Agent::take(Handle handle)
{
    beginTake(handle);
    return answer().result;
}

std::uint64_t Agent::takeAll(const Handles& handles)
{
    beginTakeAll(handles);
    return answer().result;
}

std::uint64_t Agent::tryTake(Handle handle)
{
    return ask("wait" + atOnce + list({ handle })).result;
}

std::uint64_t Agent::tryTakeAll(const Handles& handles)
{
    return tryTakeAllWithReason(handles).result;
}

Answer Agent::takeWithReason(Handle handle)
{
    beginTake(handle);
    return answer();
}

Answer Agent::tryTakeAllWithReason(const Handles& handles)
{
    return ask("wait-all" + atOnce + list(handles));
}

Answer Agent::release(Handle handle)
{
    return ask("release" + list({ handle }));
}

void Agent::releaseAll(const Handles& handles)
{
    for (const Handle handle : handles) {
        if (release(handle).result == 0) {
            throw std::runtime_error("a mutex was not released");
        }
    }
}

void Agent::beginTurns(std::chrono::milliseconds duration, const Handles& handles, const std::string& file)
{
    begin("turns " + file + ' ' + std::to_string(duration.count()) + list(handles));
}

void Agent::beginAttempts(std::chrono::milliseconds duration, const Handles& handles)
{
    begin("attempts " + std::to_string(duration.count()) + list(handles));
}

void Agent::beginRace(unsigned rounds, const std::u16string& name, const std::string& file)
{
    begin("race " + encoded(name) + ' ' + file + ' ' + std::to_string(rounds));
}

std::chrono::milliseconds Agent::processorTime()
{
    return std::chrono::milliseconds(ask("processor-time").result);
}

bool Agent::hasAnswered() const
{
    return !m_answers->isEmpty();
}

Answer Agent::answer()
{
    return answer(limitOfAnswers);
}

Answer Agent::answer(std::chrono::milliseconds limit)
{
    const auto line = m_answers->pop(limit);
    if (!line) {
        throw std::runtime_error("no answer to '" + m_command + '\'');
    }
    m_command.clear();
    std::istringstream words(*line);
    Answer answer {};
    words >> answer.result >> answer.error;
    return answer;
}

void Agent::begin(std::string command)
{
    m_command = std::move(command);
    send(m_command);
}

Answer Agent::ask(std::string command)
{
    begin(std::move(command));
    return answer();
}

AgentThread::AgentThread()
    : m_thread([commands = m_commands, answers = m_answers] {
        serve(*commands, [answers](const std::string& line) { answers->push(line); });
    })
{ }

AgentThread::~AgentThread()
{
    // What never came back from a call is a failure that was told, and must not keep that from being read.
    if (isAsked() && !m_answers->pop(limitOfEnds)) {
        m_thread.detach();
    } else {
        end();
    }
}

void AgentThread::end()
{
    m_commands->close();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void AgentThread::send(const std::string& line)
{
    m_commands->push(line);
}

AgentProcess::AgentProcess()
    : m_process(new ChildProcess(agentRole))
    , m_reader([this] {
        for (std::string line = nextLine(m_process->output()); !line.empty();
             line = nextLine(m_process->output())) {
            m_answers->push(line);
        }
        m_answers->close();
    })
{ }

AgentProcess::~AgentProcess()
{
    m_process->closeInput();
    m_reader.join();
}

void AgentProcess::handOver()
{
    ask(handOverCommand);
    processorTime(); // the heir's first word
}

void AgentProcess::kill()
{
    m_process->kill();
}

void AgentProcess::send(const std::string& line)
{
    std::fputs((line + '\n').c_str(), m_process->input());
    std::fflush(m_process->input());
}

int serveAsAgentProcess()
{
    LineQueue commands;
    std::promise<void> served;
    std::thread reader([&commands, hasServed = served.get_future()] {
        readCommands(commands);
        // Who told this process what to do is gone, and a call that blocks has nobody to come back to.
        if (hasServed.wait_for(limitOfEnds) != std::future_status::ready) {
            std::_Exit(EXIT_FAILURE);
        }
    });
    serve(commands, [](const std::string& line) { std::cout << line << std::endl; });
    served.set_value();
    reader.join();
    return EXIT_SUCCESS;
}
