#include "agent.h"

#include <algorithm>
#include <atomic>
#include <cinttypes>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <list>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>

using namespace std::chrono_literals;

const char* const agentRole = "agent";

namespace {

using Clock = std::chrono::steady_clock;

/** The other side of an agent: what carries the commands out. */
class Servant
{
public:
    Servant() = default;

    ~Servant()
    {
        for (HANDLE handle : m_open) {
            CloseHandle(handle);
        }
    }

    Servant(const Servant&) = delete;
    Servant& operator=(const Servant&) = delete;

    Answer execute(const std::string& line)
    {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        m_numbers.assign(std::istream_iterator<std::uint64_t>(words), {});
        m_name.assign(m_numbers.begin(), m_numbers.end());
        m_handles.clear();
        for (const std::uint64_t number : m_numbers) {
            m_handles.push_back(reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(number)));
        }
        return m_commands.at(verb)();
    }

private:
    LPCWSTR name() const { return reinterpret_cast<LPCWSTR>(m_name.c_str()); }

    static Answer answered(DWORD result, DWORD failure)
    {
        return { result, result == failure ? GetLastError() : 0 };
    }

    Answer opened(HANDLE handle)
    {
        const DWORD error = GetLastError();
        if (handle) {
            m_open.insert(handle);
        }
        return { reinterpret_cast<std::uintptr_t>(handle), error };
    }

    Answer close()
    {
        m_open.erase(m_handles[0]);
        return answered(static_cast<DWORD>(CloseHandle(m_handles[0])), FALSE);
    }

    /** As long as the first number says; the handles stand behind that. */
    Answer wait()
    {
        const auto limit = static_cast<DWORD>(m_numbers[0]);
        const auto count = static_cast<DWORD>(m_handles.size() - 1);
        const DWORD result = count == 1
            ? WaitForSingleObject(m_handles[1], limit)
            : WaitForMultipleObjects(count, std::next(m_handles.data()), TRUE, limit);
        return answered(result, WAIT_FAILED);
    }

    Answer release(std::ptrdiff_t first)
    {
        const bool released = std::all_of(std::next(m_handles.begin(), first), m_handles.end(), ReleaseMutex);
        return answered(released ? TRUE : FALSE, FALSE);
    }

    Answer pass()
    {
        const Answer answer = wait();
        if (answer == owned || answer == abandoned) {
            const bool alone = isAlone();
            return release(1) == done && alone ? answer : Answer { WAIT_FAILED, 0 };
        }
        return answer;
    }

    Answer passOften()
    {
        const std::chrono::milliseconds duration(m_numbers[0]);
        m_handles.erase(m_handles.begin());
        m_numbers.erase(m_numbers.begin());
        Answer counted { 0, 0 };
        for (const auto start = Clock::now(); Clock::now() - start < duration;) {
            ++(pass() == owned ? counted.result : counted.error);
        }
        return counted;
    }

    Answer race()
    {
        std::minstd_rand random { GetCurrentProcessId() };
        unsigned longestPause = 100;
        Answer counted { 0, 0 };
        m_name.erase(0, 1);
        while (counted.result + counted.error < m_numbers[0]) {
            const HANDLE mutex = CreateMutexW(nullptr, FALSE, name());
            const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
            const bool taken = mutex && WaitForSingleObject(mutex, INFINITE) == WAIT_OBJECT_0;
            const bool alone = taken && isAlone();
            ++(ReleaseMutex(mutex) && CloseHandle(mutex) && alone ? counted.result : counted.error);
            // As long as it takes to have everybody out every other time.
            longestPause = existed ? std::min(longestPause * 2, 50000U) : longestPause / 2 + 1;
            std::this_thread::sleep_for(std::chrono::microseconds(random() % longestPause));
        }
        return counted;
    }

    /** Whether nobody else is at the same place, if there is one. */
    bool isAlone() const
    {
        return m_place.empty()
            || (std::filesystem::create_directory(m_place) && std::filesystem::remove(m_place));
    }

    const std::map<std::string, std::function<Answer()>> m_commands {
        { "create", [this] { return opened(CreateMutexW(nullptr, FALSE, name())); } },
        { "open", [this] { return opened(OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, name())); } },
        { "close", [this] { return close(); } },
        { "wait", [this] { return wait(); } },
        { "release", [this] { return release(0); } },
        { "pass", [this] { return pass(); } },
        { "pass-often", [this] { return passOften(); } },
        { "race", [this] { return race(); } },
        { "meet", [this] { return m_place = std::filesystem::temp_directory_path() / m_name, done; } },
    };
    std::vector<std::uint64_t> m_numbers;
    std::u16string m_name; ///< the numbers, as the characters of one
    std::vector<HANDLE> m_handles; ///< and as handles
    std::filesystem::path m_place;
    std::set<HANDLE> m_open;
};

} // namespace

std::ostream& operator<<(std::ostream& stream, const Answer& answer)
{
    return stream << answer.result << ' ' << answer.error;
}

Agent::Numbers Agent::with(std::uint64_t first, Numbers others)
{
    others.insert(others.begin(), first);
    return others;
}

void Agent::begin(const std::string& verb, const Numbers& numbers)
{
    std::string line = verb;
    for (const std::uint64_t number : numbers) {
        line += ' ' + std::to_string(number);
    }
    m_answer = send(line);
}

Answer Agent::ask(const std::string& verb, const Numbers& numbers)
{
    begin(verb, numbers);
    return answer();
}

bool Agent::hasAnswered() const
{
    return m_answer.wait_for(0s) == std::future_status::ready;
}

Answer Agent::answer(std::chrono::milliseconds limit)
{
    if (m_answer.wait_for(limit) != std::future_status::ready) {
        throw std::runtime_error("no answer");
    }
    return m_answer.get();
}

struct AgentThread::Call
{
    std::string line;
    std::promise<Answer> answer;
    std::future<std::unique_ptr<Call>> next;
};

AgentThread::AgentThread()
    : m_thread([next = m_next.get_future()]() mutable {
        Servant servant;
        while (const std::unique_ptr<Call> call = next.get()) {
            next = std::move(call->next);
            call->answer.set_value(servant.execute(call->line));
        }
    })
{ }

AgentThread::~AgentThread()
{
    // What never came back from a call is a failure that was told, and must not keep that from being read.
    if (m_answer.valid() && !hasAnswered()) {
        m_thread.detach();
    } else {
        end();
    }
}

void AgentThread::end()
{
    if (m_thread.joinable()) {
        m_next.set_value(nullptr);
        m_thread.join();
    }
}

std::future<Answer> AgentThread::send(const std::string& line)
{
    auto call = std::make_unique<Call>();
    call->line = line;
    std::future<Answer> answer = call->answer.get_future();
    std::promise<std::unique_ptr<Call>> next;
    call->next = next.get_future();
    std::exchange(m_next, std::move(next)).set_value(std::move(call));
    return answer;
}

AgentProcess::AgentProcess()
    : m_process(startThisProgram(agentRole))
{ }

AgentProcess::~AgentProcess()
{
    if (!m_ended && (!m_answer.valid() || hasAnswered())) {
        // In order, and without files that are left behind.
        std::fputs("\n", m_process.input);
        std::fflush(m_process.input);
        while (std::fgetc(m_process.output) != EOF) { }
    }
    end();
    if (m_answer.valid()) {
        m_answer.wait();
    }
    std::fclose(m_process.input);
    std::fclose(m_process.output);
}

void AgentProcess::end()
{
    if (!std::exchange(m_ended, true)) {
        endAtOnce(m_process);
    }
}

std::future<Answer> AgentProcess::send(const std::string& line)
{
    std::fputs((line + '\n').c_str(), m_process.input);
    std::fflush(m_process.input);
    return std::async(std::launch::async, [output = m_process.output] {
        Answer answer {};
        if (std::fscanf(output, "%" SCNu64 "%" SCNu64, &answer.result, &answer.error) != 2) {
            throw std::runtime_error("a process ended");
        }
        return answer;
    });
}

int serveAsAgent()
{
    Servant servant;
    std::string line;
    while (std::getline(std::cin, line) && !line.empty()) {
        std::cout << servant.execute(line) << std::endl;
    }
    return EXIT_SUCCESS;
}

std::u16string uniqueName()
{
    static std::atomic<unsigned> count { 0 };
    static const auto start = std::chrono::system_clock::now().time_since_epoch().count();
    const std::string text = "vantkit-test-" + std::to_string(GetCurrentProcessId()) + '-'
        + std::to_string(start) + '-' + std::to_string(++count);
    return std::u16string(text.begin(), text.end());
}

std::uint64_t failuresOfRace(std::size_t processes, std::uint64_t rounds)
{
    const std::u16string name = uniqueName();
    std::list<AgentProcess> racers(processes);
    for (AgentProcess& racer : racers) {
        racer.meetAt(name); // it is there, and all start together
    }
    for (AgentProcess& racer : racers) {
        racer.beginRace(rounds, name);
    }
    std::uint64_t failures = 0;
    for (AgentProcess& racer : racers) {
        failures += rounds - racer.answer(20s + rounds * 100ms).result;
    }
    return failures + racers.front().tryOpen(name).result;
}
