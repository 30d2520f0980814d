#include "counter-race.h"

#include "agent.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <list>

using namespace std::chrono_literals;

namespace {

std::string uniqueText()
{
    static std::atomic<unsigned> count { 0 };
    static const auto start = std::chrono::system_clock::now().time_since_epoch().count();
    return "vantkit-test-" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(start) + '-'
        + std::to_string(++count);
}

} // namespace

CounterFile::CounterFile()
    : m_path((std::filesystem::temp_directory_path() / uniqueText()).string())
{ }

CounterFile::~CounterFile()
{
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
}

std::uint64_t CounterFile::number() const
{
    std::uint64_t number = 0;
    std::ifstream(m_path) >> number;
    return number;
}

std::u16string uniqueName()
{
    const std::string text = uniqueText();
    return std::u16string(text.begin(), text.end());
}

RaceOutcome raceForCounter(unsigned processes, unsigned rounds)
{
    const CounterFile file;
    const std::u16string name = uniqueName();
    std::list<AgentProcess> racers(processes);
    for (AgentProcess& racer : racers) {
        racer.processorTime(); // it is there, and all start together
    }
    for (AgentProcess& racer : racers) {
        racer.beginRace(rounds, name, file.path());
    }
    RaceOutcome outcome;
    outcome.expected = std::uint64_t { processes } * rounds;
    for (AgentProcess& racer : racers) {
        const Answer counted = racer.answer(20s + rounds * 100ms);
        outcome.created += counted.result;
        outcome.failures += counted.error;
    }
    outcome.counted = file.number();
    outcome.nothingIsLeft = racers.front().tryOpen(name) == Answer { 0, ERROR_FILE_NOT_FOUND };
    return outcome;
}
