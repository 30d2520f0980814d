// What users of the named mutexes rely on, on every system.

#include "platform/win32.h"
#include "processes/scene.h"

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <algorithm>
#include <array>
#include <doctest/doctest.h>
#include <vector>

namespace {

const std::string allFine;

/** The names of reader mutexes, which Scene's "owned" looks at. */
std::string readers(int count)
{
    std::string names;
    for (int slot = 0; slot < count; ++slot) {
        names += " file" + std::to_string(slot);
    }
    return names;
}

} // namespace

TEST_CASE("Only one owns a mutex at a time")
{
    CHECK(Scene().play(
              "P1 create a; P2 open a; Q open a; P1 take a; P2 try a: busy; Q try a: busy; "
              "P2 release a: false; Q release a: false; Q take a!: begun; Q waits; P1 release a; "
              "Q answers; P1 try a: busy; P2 try a: busy; P1 release a: false; Q release a; P2 take a; "
              "P1 try a: busy; P2 release a; P2 release a: false")
        == allFine);
}

TEST_CASE("A mutex exists while a handle on it does, in whatever process")
{
    CHECK(
        Scene().play("P open a: missing; P create a; P1 open a; Q create a; P close a; P1 close a; P open a; "
                     "P close a; Q close a; P open a: missing; Q open a: missing; P create a; P take a; "
                     "P release a")
        == allFine);
    CHECK(Scene().play(
              "P create a; Q open a; P take a; Q create b; Q take b; P kill; Q close a; Q open a: missing; "
              "Q create a; Q take a; Q kill; R open a: missing; R open b: missing; R create b; R take b")
        == allFine);
}

TEST_CASE("One next owner is told that the last one ended without a release")
{
    CHECK(Scene().play(
              "P create a; Q create a b; P take a; P kill; Q take a: abandoned; Q release a; Q take a; "
              "Q release a; P create a; P take a; P kill; Q take a b: abandoned; Q release a b; Q take a b")
        == allFine);

    Scene scene;
    CHECK(scene.play("P create a; Q create a; R create a b; S create b a; P take a; Q pass a!: begun; "
                     "R pass a b!: begun; S pass b a!: begun; Q waits; R waits; S waits; P kill")
        == allFine);
    const std::array<std::string, 3> answers { scene.answer("Q"), scene.answer("R"), scene.answer("S") };
    CHECK(std::count(answers.begin(), answers.end(), "abandoned") == 1);
    CHECK(std::count(answers.begin(), answers.end(), "true") == 2);
}

TEST_CASE("A wait for all takes all or none, and nothing while it waits")
{
    for (const int count : { 2, 64 }) {
        CAPTURE(count);
        const std::string names = readers(count);
        Scene scene;
        CHECK(scene.play("P create" + names + "; Q create" + names) == allFine);
        for (const int slot : { 0, count / 2, count - 1 }) {
            CAPTURE(slot);
            const std::string kept = std::to_string(slot);
            CHECK(scene.play("Q take file" + kept + "; P try" + names + ": busy; R owned: " + kept
                      + "; P take" + names + "!: begun; P waits; R owned: " + kept + "; Q release file" + kept
                      + "; P answers; Q try file" + kept + ": busy; P release" + names + "; R owned: ")
                == allFine);
        }
        CHECK(scene.play("Q take file1; P take" + names
                  + "!: begun; P waits; Q kill; P answers: abandoned; P release" + names + "; P try" + names
                  + "")
            == allFine);
    }
}

TEST_CASE("Waits in any order neither meet nor block each other, even as the last one closes a mutex")
{
    CHECK(Scene().play(
              "P often 1000 a b c!: begun; Q often 1000 c b a!: begun; R often 1000 b c a!: begun; "
              "S often 1000 a!: begun; T often 1000 c!: begun; P answers; Q answers; R answers; S answers; "
              "T answers; P open a: missing; P open b: missing")
        == allFine);
}

TEST_CASE("Who is killed at any moment does not block the others")
{
    Scene scene;
    CHECK(scene.play("P often 3600000 a b!: begun; Q create a b") == allFine);
    for (unsigned round = 0; round < 20; ++round) {
        CAPTURE(round);
        CHECK(scene.play("R often 3600000 b a!: begun") == allFine);
        Sleep(round % 7);
        CHECK(scene.play("R kill; Q pass a b becomes true") == allFine);
    }
    CHECK(scene.play("P waits; P kill") == allFine);
}

TEST_CASE("Names are told apart by every character")
{
    const std::u16string common = u"vantkit-test-" + std::u16string(150, u'x');
    std::vector<HANDLE> open;
    for (const char16_t* ending : { u"", u" ", u"  ", u"A", u"a", u"\n", u"/", u"../x", u".", u"*", u"%s%n",
             u"\u00e9", u"e\u0301", u"\U0001F600", u"\U0001F601", u"\xD83D", u"\u0100", u"\x0001" }) {
        const std::u16string text = common + ending;
        const auto* const name = reinterpret_cast<LPCWSTR>(text.c_str());
        CHECK(OpenMutexW(SYNCHRONIZE, FALSE, name) == nullptr);
        CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
        open.push_back(CreateMutexW(nullptr, FALSE, name));
    }
    std::for_each(open.begin(), open.end(), CloseHandle);
}
