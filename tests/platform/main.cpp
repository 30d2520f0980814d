#include "agent.h"
#include "counter-race.h"
#include "system.h"

#define DOCTEST_CONFIG_IMPLEMENT
#include <cstdlib>
#include <doctest/doctest.h>
#include <iostream>

namespace {

const char* const raceUsage = "Usage: platform-test race [--processes N] [--rounds N]\n";

bool readNumber(const std::string& text, unsigned& number)
{
    char* end = nullptr;
    number = static_cast<unsigned>(std::strtoul(text.c_str(), &end, 10));
    return *end == '\0' && number > 0;
}

int race(int argc, char** argv)
{
    unsigned processes = 8;
    unsigned rounds = 1000;
    for (int i = 2; i < argc; i += 2) {
        const std::string option = argv[i];
        unsigned& number = option == "--rounds" ? rounds : processes;
        if ((option != "--processes" && option != "--rounds") || i + 1 == argc
            || !readNumber(argv[i + 1], number)) {
            std::cerr << raceUsage;
            return EXIT_FAILURE;
        }
    }
    const RaceOutcome outcome = raceForCounter(processes, rounds);
    std::cout << processes << " processes, " << rounds << " rounds each: the counter is " << outcome.counted
              << " of " << outcome.expected << ", " << outcome.failures
              << " rounds failed. The mutex was created " << outcome.created << " times and is "
              << (outcome.nothingIsLeft ? "gone" : "left") << ".\n";
    return outcome.isGood() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    surviveBrokenPipes();
    std::cout << std::unitbuf; // what failed shows even if the program then hangs
    const std::string role = argc > 1 ? argv[1] : "";
    try {
        if (role == agentRole) {
            return serveAsAgentProcess();
        }
        if (role == "race") {
            return race(argc, argv);
        }
        return doctest::Context(argc, argv).run();
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << '\n';
        return EXIT_FAILURE;
    }
}
