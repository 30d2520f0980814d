// Has many processes contend for one identity, end, be killed and talk. The suite has each driver do so for a
// moment, `./dev endurance` for longer than a test should take.

#include "processes/scene.h"

#include <cstdlib>
#include <functional>
#include <iostream>
#include <stdexcept>

namespace {

void play(Scene& scene, const std::string& steps)
{
    if (const std::string wrong = scene.play(steps); !wrong.empty()) {
        throw std::runtime_error(wrong);
    }
}

/** Tells each of so many processes at once what is found for its number; all but some give the answer. */
void tellAll(Scene& scene, int count, const std::function<std::string(int)>& lineFor,
    const std::string& answer, int times)
{
    for (int number = 0; number < count; ++number) {
        scene.tell(std::to_string(number), lineFor(number));
    }
    for (int number = 0; number < count; ++number) {
        times -= scene.answer(std::to_string(number)) == answer ? 1 : 0;
    }
    if (times != 0) {
        throw std::runtime_error("too few or too many answered " + answer + " to " + lineFor(0));
    }
}

/** One of those that send at once becomes the primary process, and gets what all others send. */
void starts(int count)
{
    for (int round = 0; round < count / 5; ++round) {
        Scene scene;
        const auto countReceived = [](int) { return "left"; };
        tellAll(scene, count, countReceived, "0", count); // all are there
        tellAll(
            scene, count, [](int) { return "send hello"; }, "true", count - 1);
        tellAll(scene, count, countReceived, std::to_string(count - 1), 1);
    }
}

/** The primary process ends in every round, and the next one tries all the time. */
void successions(const std::string& end, int rounds)
{
    Scene scene;
    play(scene, "A isClient: false");
    for (int round = 0; round < rounds; ++round) {
        const std::string next = round % 2 == 0 ? "B " : "A ";
        const std::string text = std::to_string(round);
        play(scene,
            next + "succeed!: begun; " + (round % 2 == 0 ? "A " : "B ") + end + "; " + next + "answers; "
                + "C send " + text + "; " + next + "next: " + text + "; " + next + "left: 0");
    }
}

/** Texts of all kinds and lengths, which many send at once, arrive once and unchanged. */
void messages(int count)
{
    Scene scene;
    play(scene, "P isClient: false");
    for (int first = 0; first < count; first += 200) {
        const auto send = [=](int number) {
            return "send-texts " + std::to_string(first + number * 25) + " 25";
        };
        tellAll(scene, 8, send, "true", 8);
        play(scene, "P take-texts " + std::to_string(first) + " 200");
    }
}

/** A mutex is created, taken, released and closed as fast as that goes. */
void mutexes(int rounds)
{
    Scene scene;
    for (int round = 0; round < rounds; ++round) {
        tellAll(
            scene, 8, [](int) { return "often 1000 a b"; }, "true", 8);
        play(scene, "P open a: missing");
    }
}

} // namespace

/** The driver and its amount. */
int main(int /*argc*/, char** argv)
{
    const std::map<std::string, std::function<void(int)>> drivers {
        { "starts", starts },
        { "kills", [](int rounds) { successions("kill", rounds); } },
        { "ends", [](int rounds) { successions("end", rounds); } },
        { "messages", messages },
        { "mutexes", mutexes },
    };
    try {
        drivers.at(argv[1])(std::atoi(argv[2]));
        return EXIT_SUCCESS;
    } catch (const std::exception& wrong) {
        std::cerr << argv[1] << ": " << wrong.what() << std::endl;
        return EXIT_FAILURE;
    }
}
