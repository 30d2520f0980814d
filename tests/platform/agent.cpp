#include "agent.h"

#include <queue>

#include <algorithm>
#include <atomic>
#include <cinttypes>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <list>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>

using namespace std::chrono_literals;

const char* const agentRole = "agent";

namespace {

using Clock = std::chrono::steady_clock;

std::filesystem::path counterFile(const std::u16string& name)
{
    return std::filesystem::temp_directory_path() / name;
}

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
        return m_commands.at(verb)();
    }

private:
    LPCWSTR name() const { return reinterpret_cast<LPCWSTR>(m_name.c_str()); }

    HANDLE handle(std::size_t index = 0) const
    {
        return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(m_numbers.at(index)));
    }

    std::vector<HANDLE> handlesFrom(std::size_t begin) const
    {
        std::vector<HANDLE> handles;
        handles.reserve(MAXIMUM_WAIT_OBJECTS); // even none have an address then
        for (std::size_t i = begin; i < m_numbers.size(); ++i) {
            handles.push_back(handle(i));
        }
        return handles;
    }

    static Answer answered(DWORD result, DWORD failure)
    {
        return { result, result == failure ? GetLastError() : 0 };
    }

    DWORD waitFor(const std::vector<HANDLE>& handles) const
    {
        const auto limit = static_cast<DWORD>(m_numbers.at(0));
        return handles.size() == 1
            ? WaitForSingleObject(handles.front(), limit)
            : WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), TRUE, limit);
    }

    static DWORD release(const std::vector<HANDLE>& handles)
    {
        return std::all_of(handles.begin(), handles.end(), ReleaseMutex) ? TRUE : FALSE;
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
        m_open.erase(handle());
        return answered(static_cast<DWORD>(CloseHandle(handle())), FALSE);
    }

    Answer takeTurns()
    {
        const auto end = Clock::now() + std::chrono::milliseconds(m_numbers.at(1));
        const std::vector<HANDLE> handles = handlesFrom(2);
        Answer counted { 0, 0 };
        while (Clock::now() < end) {
            const DWORD taken = waitFor(handles);
            if (taken != WAIT_FAILED) {
                countOne();
            }
            ++(release(handles) && taken == WAIT_OBJECT_0 ? counted.result : counted.error);
        }
        return counted;
    }

    Answer race()
    {
        std::minstd_rand random { GetCurrentProcessId() };
        unsigned longestPause = 100;
        std::uint64_t failures = 0;
        m_name.erase(0, 1);
        for (std::uint64_t round = 0; round < m_numbers.front(); ++round) {
            const HANDLE mutex = CreateMutexW(nullptr, FALSE, name());
            const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
            const bool taken = mutex && WaitForSingleObject(mutex, INFINITE) == WAIT_OBJECT_0;
            if (taken) {
                countOne();
            }
            failures += taken && ReleaseMutex(mutex) && CloseHandle(mutex) ? 0 : 1;
            // As long as it takes to have everybody out every other time.
            longestPause = existed ? std::min(longestPause * 2, 50000U) : longestPause / 2 + 1;
            std::this_thread::sleep_for(std::chrono::microseconds(random() % longestPause));
        }
        return { 0, failures };
    }

    void countOne()
    {
        if (!m_counter.empty()) {
            std::uint64_t number = 0;
            std::ifstream(m_counter) >> number;
            std::ofstream(m_counter) << number + 1;
        }
    }

    const std::map<std::string, std::function<Answer()>> m_commands {
        { "create", [this] { return opened(CreateMutexW(nullptr, FALSE, name())); } },
        { "open", [this] { return opened(OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, name())); } },
        { "close", [this] { return close(); } },
        { "wait", [this] { return answered(waitFor(handlesFrom(1)), WAIT_FAILED); } },
        { "release", [this] { return answered(release(handlesFrom(0)), FALSE); } },
        { "count", [this] { return m_counter = counterFile(m_name), done; } },
        { "turns", [this] { return takeTurns(); } },
        { "race", [this] { return race(); } },
    };
    std::vector<std::uint64_t> m_numbers;
    std::u16string m_name; ///< the numbers, as the characters of one
    std::filesystem::path m_counter;
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

struct AgentThread::Seat
{
    using Task = std::packaged_task<Answer(Servant&)>;

    void push(Task task)
    {
        const std::lock_guard<std::mutex> lock(guard);
        tasks.push(std::move(task));
        changed.notify_one();
    }

    Task pop()
    {
        std::unique_lock<std::mutex> lock(guard);
        changed.wait(lock, [this] { return !tasks.empty(); });
        Task task = std::move(tasks.front());
        tasks.pop();
        return task;
    }

    std::mutex guard;
    std::condition_variable changed;
    std::queue<Task> tasks; ///< the last one is none
};

AgentThread::AgentThread()
    : m_seat(std::make_shared<Seat>())
    , m_thread([seat = m_seat] {
        Servant servant;
        for (Seat::Task task = seat->pop(); task.valid(); task = seat->pop()) {
            task(servant);
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
        m_seat->push({});
        m_thread.join();
    }
}

std::future<Answer> AgentThread::send(const std::string& line)
{
    Seat::Task task([line](Servant& servant) { return servant.execute(line); });
    std::future<Answer> answer = task.get_future();
    m_seat->push(std::move(task));
    return answer;
}

AgentProcess::AgentProcess()
    : m_process(startThisProgram(agentRole))
{ }

AgentProcess::~AgentProcess()
{
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
    while (std::getline(std::cin, line)) {
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

std::uint64_t takeCount(const std::u16string& name)
{
    std::uint64_t number = 0;
    std::ifstream(counterFile(name)) >> number;
    std::filesystem::remove(counterFile(name));
    return number;
}

Answer raceForCounter(std::size_t processes, std::uint64_t rounds)
{
    const std::u16string name = uniqueName();
    std::list<AgentProcess> racers(processes);
    for (AgentProcess& racer : racers) {
        racer.countIn(name); // it is there, and all start together
    }
    for (AgentProcess& racer : racers) {
        racer.beginRace(rounds, name);
    }
    Answer outcome { 0, 0 };
    for (AgentProcess& racer : racers) {
        outcome.error += racer.answer(20s + rounds * 100ms).error;
    }
    outcome.result = takeCount(name);
    outcome.error += racers.front().tryOpen(name) == Answer { 0, ERROR_FILE_NOT_FOUND } ? 0 : 1;
    return outcome;
}
