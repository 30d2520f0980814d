#include "agent.h"

#define DOCTEST_CONFIG_IMPLEMENT
#include <cstdlib>
#include <doctest/doctest.h>
#include <iostream>

int main(int argc, char** argv)
{
    std::cout << std::unitbuf; // what failed shows even if the program then hangs
    const std::string role = argc > 1 ? argv[1] : "";
    if (role == agentRole) {
        return serveAsAgent();
    }
    if (role == "race") { // for longer than a test may take
        const std::uint64_t failures = failuresOfRace(8, 1000);
        std::cout << "8 processes, 1000 rounds each: " << failures << " failed\n";
        return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    return doctest::Context(argc, argv).run();
}
