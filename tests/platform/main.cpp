#include "agent.h"

#define DOCTEST_CONFIG_IMPLEMENT
#include <cstdlib>
#include <doctest/doctest.h>
#include <iostream>

namespace {

/** For longer than a test may take; the arguments are the numbers of processes and of rounds. */
int race(const std::string& processes, const std::string& rounds)
{
    const Answer outcome = raceForCounter(std::stoul(processes), std::stoul(rounds));
    std::cout << processes << " processes, " << rounds << " rounds each: " << outcome.result << " counted, "
              << outcome.error << " failures\n";
    return outcome == Answer { std::stoull(processes) * std::stoull(rounds), 0 } ? EXIT_SUCCESS
                                                                                 : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    std::cout << std::unitbuf; // what failed shows even if the program then hangs
    const std::string role = argc > 1 ? argv[1] : "";
    if (role == agentRole) {
        return serveAsAgent();
    }
    if (role == "race" && argc == 4) {
        return race(argv[2], argv[3]);
    }
    return doctest::Context(argc, argv).run();
}
