// What users of the named mutexes rely on, on every system.

#include "platform/win32.h"
#include "processes/scene.h"

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>

TEST_CASE("Scenes of mutexes")
{
    const char* const ofNames =
        "P create abc; P open abd: missing; P open Abc: missing; P open bac: missing; P open ab: missing; "
        "P open äbc: missing; P create äbc 😀; Q open 😁: missing; Q open äbc";
    const char* const ofOwners =
        "P1 create a; P2 open a; Q open a; P1 take a; P2 try a: busy; Q try a: busy; P2 release a: false; "
        "Q release a: false; Q take a!: begun; Q waits; P1 release a; Q answers; P1 try a: busy; "
        "P1 release a: false; Q release a; P2 take a; P1 try a: busy";
    const char* const ofExistence =
        "P open a: missing; P create a; P1 open a; Q create a; P close a; P1 close a; P open a; "
        "P close a; Q close a; P open a: missing; Q open a: missing; P create a; P take a; Q create b; "
        "Q take b; P kill; Q open a: missing; Q create a; Q take a; Q kill; R open a: missing; "
        "R create b; R take b";
    const char* const ofAbandonment =
        "P create a; Q create a b; P take a; P kill; Q take a: abandoned; Q release a; Q take a; "
        "Q release a; P create a; P take a; P kill; Q take a b: abandoned; Q release a b; Q take a b";
    const char* const ofWaitsInAnyOrder =
        "P often 1000 a b c!: begun; Q often 1000 c b a!: begun; R often 1000 b c a!: begun; "
        "S often 1000 a!: begun; P answers; Q answers; R answers; S answers; P open a: missing";
    for (const char* const steps : { ofNames, ofOwners, ofExistence, ofAbandonment, ofWaitsInAnyOrder }) {
        CHECK(Scene().play(steps) == "");
    }
    CHECK(WaitForSingleObject(nullptr, 0) == WAIT_FAILED);
    CHECK(!ReleaseMutex(nullptr));
}

TEST_CASE("A wait for all takes all or none, and nothing while it waits")
{
    std::string all;
    for (DWORD slot = 0; slot < MAXIMUM_WAIT_OBJECTS; ++slot) {
        all += " file" + std::to_string(slot);
    }
    Scene scene;
    REQUIRE(scene.play("P create" + all + "; Q create" + all) == "");
    for (const std::string kept : { "0", "32", "63" }) {
        REQUIRE(scene.play("Q take file" + kept + "; P try" + all + ": busy; R owned: " + kept + "; P take"
                    + all + "!: begun; P waits; R owned: " + kept + "; Q release file" + kept
                    + "; P answers; Q try file" + kept + ": busy; P release" + all + "; R owned: ")
            == "");
    }
    CHECK(scene.play("Q take file1; P take" + all + "!: begun; P waits; Q kill; P answers: abandoned") == "");
}

TEST_CASE("Who is killed at any moment does not block the others")
{
    Scene scene;
    REQUIRE(scene.play("P often 3600000 a b!: begun; Q create a b") == "");
    for (unsigned round = 0; round < 20; ++round) {
        REQUIRE(scene.play("R often 3600000 b a!: begun") == "");
        Sleep(round % 7);
        REQUIRE(scene.play("R kill; Q take a b: *; Q release a b; Q take a b; Q release a b") == "");
    }
    CHECK(scene.play("P waits; P kill") == "");
}
