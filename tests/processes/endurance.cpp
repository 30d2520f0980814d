// Has many processes contend for one identity, end, be killed and talk. The suite has each driver do so for a
// moment, `./dev endurance` for longer than a test should take.

#include "processes/scene.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <vector>

namespace {

void demand(bool holds, const std::string& otherwise)
{
    if (!holds) {
        throw std::runtime_error(otherwise);
    }
}

void play(Scene& scene, const std::string& steps)
{
    const std::string wrong = scene.play(steps);
    demand(wrong.empty(), wrong);
}

/** The answers of the processes of those numbers, which are told at once. */
std::vector<std::string> askAll(Scene& scene, int count, const std::function<std::string(int)>& lineFor)
{
    for (int number = 0; number < count; ++number) {
        scene.tell(std::to_string(number), lineFor(number));
    }
    std::vector<std::string> answers;
    for (int number = 0; number < count; ++number) {
        answers.push_back(scene.answer(std::to_string(number)));
    }
    return answers;
}

auto always(const std::string& line)
{
    return [line](int) { return line; };
}

void demandTrue(const std::vector<std::string>& answers, std::ptrdiff_t count)
{
    demand(std::count(answers.begin(), answers.end(), "true") == count, "not as many agreed as should");
}

std::string texts(int first, int count)
{
    return "-texts " + std::to_string(first) + " " + std::to_string(count);
}

/** One of those that send at once becomes the primary process, and gets what all others send. */
void starts(int count)
{
    Scene scene;
    askAll(scene, count, always("left")); // all are there
    const auto sent = askAll(scene, count, always("send hello"));
    demandTrue(sent, count - 1);
    const auto primary = std::find(sent.begin(), sent.end(), "false") - sent.begin();
    scene.tell(std::to_string(primary), "left");
    demand(scene.answer(std::to_string(primary)) == std::to_string(count - 1), "not all was received once");
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
            next + "succeed!: begun; " + (round % 2 == 0 ? "A " : "B ") + end + "; " + next + "answers");
        play(scene, "C send " + text + "; " + next + "next: " + text + "; " + next + "left: 0");
    }
}

/** Texts of all kinds and lengths, which many send at once, arrive once and unchanged. */
void messages(int clients, int count)
{
    constexpr int share = 25;
    Scene scene;
    play(scene, "P isClient: false");
    for (int first = 0; first < count; first += clients * share) {
        const auto send = [=](int number) { return "send" + texts(first + number * share, share); };
        demandTrue(askAll(scene, clients, send), clients);
        play(scene, "P take" + texts(first, clients * share));
    }
}

/** A mutex is created, taken, released and closed as fast as that goes. */
void mutexes(int processes, int rounds)
{
    Scene scene;
    for (int round = 0; round < rounds; ++round) {
        demandTrue(askAll(scene, processes, always("often 1000 a b")), processes);
        play(scene, "P open a: missing");
    }
}

} // namespace

/** The driver and its amount, which is what was promised if there is none. */
int main(int argc, char** argv)
{
    const std::string driver = argc > 1 ? argv[1] : "";
    const auto amount = [=](int promised) { return argc > 2 ? std::atoi(argv[2]) : promised; };
    const std::map<std::string, std::function<void()>> drivers {
        { "starts",
            [=] {
                for (int round = 0; round < amount(100) / 5; ++round) {
                    starts(amount(100));
                }
            } },
        { "kills", [=] { successions("kill", amount(1000)); } },
        { "ends", [=] { successions("end", amount(1000)); } },
        { "messages", [=] { messages(8, amount(10000)); } },
        { "mutexes", [=] { mutexes(8, amount(20)); } },
    };
    try {
        drivers.at(driver)();
        return EXIT_SUCCESS;
    } catch (const std::exception& wrong) {
        std::cerr << driver << ": " << wrong.what() << std::endl;
        return EXIT_FAILURE;
    }
}
