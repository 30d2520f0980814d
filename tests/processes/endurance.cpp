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

std::string name(int number)
{
    return "participant " + std::to_string(number);
}

/** The answers of so many processes that are told at once. */
std::vector<std::string> askAll(Scene& scene, int count, const std::function<std::string(int)>& lineFor)
{
    for (int number = 0; number < count; ++number) {
        scene.tell(name(number), lineFor(number));
    }
    std::vector<std::string> answers;
    for (int number = 0; number < count; ++number) {
        answers.push_back(scene.answer(name(number)));
    }
    return answers;
}

auto always(const std::string& line)
{
    return [line](int) { return line; };
}

std::string texts(const std::string& verb, int first, int count)
{
    return verb + "-texts " + std::to_string(first) + " " + std::to_string(count);
}

void demandAll(const std::vector<std::string>& answers, std::ptrdiff_t count, const std::string& answer)
{
    demand(std::count(answers.begin(), answers.end(), answer) == count, "not all said " + answer);
}

/** One of those that send at once becomes the primary process, and gets what all others send, once. */
void starts(int count)
{
    Scene scene;
    askAll(scene, count, always("left")); // all are there
    demandAll(askAll(scene, count, [](int number) { return texts("send", number, 1); }), count - 1, "true");
    const auto isClient = askAll(scene, count, always("isClient"));
    demandAll(isClient, count - 1, "true");
    const auto primary =
        static_cast<int>(std::find(isClient.begin(), isClient.end(), "false") - isClient.begin());
    play(scene, "S " + texts("send", primary, 1)); // which it did not send to itself
    demand(scene.ask(name(primary), texts("take", 0, count)) == "true", "not what was sent was received");
}

/** The primary process ends in every round. The next one, which tries all the time or comes later, is it. */
void successions(const std::string& end, int rounds)
{
    Scene scene;
    play(scene, "A isClient: false");
    for (int round = 0; round < rounds; ++round) {
        const std::string next = round % 2 == 0 ? "B" : "A";
        const std::string ends = (round % 2 == 0 ? "A " : "B ") + end + "; ";
        const std::string text = std::to_string(round);
        play(scene,
            round % 4 < 2 ? next + " succeed!: begun; " + ends + next + " answers"
                          : next + " left: 0; " + ends + next + " succeed");
        play(scene, "C send " + text + "; " + next + " next: " + text + "; " + next + " left: 0");
    }
}

/** Texts of all kinds and lengths, which many send at once, arrive once and unchanged. */
void messages(int clients, int count)
{
    constexpr int share = 25;
    Scene scene;
    play(scene, "P isClient: false");
    for (int first = 0; first < count; first += clients * share) {
        const auto send = [=](int number) { return texts("send", first + number * share, share); };
        demandAll(askAll(scene, clients, send), clients, "true");
        play(scene, "P " + texts("take", first, clients * share));
    }
}

/** A mutex is created, taken, released and closed as fast as that goes. */
void mutexes(int processes, int rounds)
{
    Scene scene;
    for (int round = 0; round < rounds; ++round) {
        demandAll(askAll(scene, processes, always("often 1000 a b")), processes, "true");
        play(scene, "P open a: missing");
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string driver = argc > 1 ? argv[1] : "";
    const int amount = argc > 2 ? std::atoi(argv[2]) : 0;
    const std::map<std::string, std::function<void()>> drivers {
        { "starts",
            [=] {
                for (int round = 0; round < (amount ? 2 : 20); ++round) {
                    starts(amount ? amount : 100);
                }
            } },
        { "kills", [=] { successions("kill", amount ? amount : 1000); } },
        { "ends", [=] { successions("end", amount ? amount : 1000); } },
        { "messages", [=] { messages(8, amount ? amount : 10000); } },
        { "mutexes", [=] { mutexes(8, amount ? amount : 20); } },
    };
    try {
        drivers.at(driver)();
        std::cout << driver << ": everything held" << std::endl;
        return EXIT_SUCCESS;
    } catch (const std::exception& wrong) {
        std::cerr << driver << ": " << wrong.what() << std::endl;
        return EXIT_FAILURE;
    }
}
