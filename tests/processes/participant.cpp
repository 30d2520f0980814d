#include "processes/participant.h"

#include "processes/queue.h"

#include <filesystem>
#include <iostream>
#include <iterator>
#include <sstream>
#include <thread>

namespace {

std::string perform(const Verbs& verbs, std::istream& line)
{
    std::string verb;
    line >> verb;
    return verbs.at(verb)(Words(std::istream_iterator<std::string>(line), {}));
}

struct Thread
{
    Queue lines;
    Queue answers;
    std::thread thread;

    explicit Thread(const std::function<Verbs()>& makeVerbs)
        : thread([this, makeVerbs] {
            const Verbs verbs = makeVerbs();
            while (const auto line = lines.pop()) {
                std::istringstream words(*line);
                answers.push(perform(verbs, words));
            }
        })
    { }

    ~Thread()
    {
        lines.push(std::nullopt);
        thread.join();
    }
};

} // namespace

std::string yesOrNo(bool yes)
{
    return yes ? "true" : "false";
}

void serve(const Verbs& own, const std::function<Verbs()>& ofThread)
{
    std::filesystem::current_path(std::filesystem::temp_directory_path());
    std::map<int, Thread> threads;
    for (std::string line; std::getline(std::cin, line);) {
        if (line.back() == '!') {
            line.pop_back();
            std::cout << "begun" << std::endl;
        }
        std::istringstream words(line);
        if (int number = 0; words >> number) {
            Thread& thread = threads.try_emplace(number, ofThread).first->second;
            thread.lines.push(line.substr(static_cast<std::size_t>(words.tellg())));
            std::cout << thread.answers.pop().value() << std::endl;
        } else {
            words.clear();
            std::cout << perform(own, words) << std::endl;
        }
    }
}
