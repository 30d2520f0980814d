#pragma once

#include <cstdint>
#include <string>

/** A file for this run alone, which is not there at first and gone at last. */
class CounterFile
{
public:
    CounterFile();
    ~CounterFile();
    CounterFile(const CounterFile&) = delete;
    CounterFile& operator=(const CounterFile&) = delete;

    const std::string& path() const { return m_path; }

    std::uint64_t number() const;

private:
    std::string m_path;
};

/** A name that nobody else has. */
std::u16string uniqueName();

struct RaceOutcome
{
    std::uint64_t expected = 0;
    std::uint64_t counted = 0;
    std::uint64_t failures = 0;
    std::uint64_t created = 0; ///< how often the mutex had not been there
    bool nothingIsLeft = false;

    bool isGood() const { return counted == expected && failures == 0 && nothingIsLeft; }
};

/** Processes that create, take, release and close one mutex as fast as they can, each round counting one in a
 * file. */
RaceOutcome raceForCounter(unsigned processes, unsigned rounds);
