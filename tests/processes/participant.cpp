#include "processes/participant.h"

#include "processes/queue.h"

#include <cctype>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <sstream>
#include <thread>
#include <utility>

namespace {

std::string performWith(const Verbs& verbs, const std::string& line)
{
    std::istringstream stream(line);
    std::string verb;
    stream >> verb;
    return verbs.at(verb)(Words(std::istream_iterator<std::string>(stream), {}));
}

} // namespace

std::string yesOrNo(bool yes)
{
    return yes ? "true" : "false";
}

struct Participant::Thread
{
    Queue lines;
    Queue answers;
    std::thread thread;

    explicit Thread(const std::function<Verbs()>& makeVerbs)
        : thread([this, makeVerbs] {
            const Verbs verbs = makeVerbs();
            while (const auto line = lines.pop()) {
                answers.push(performWith(verbs, *line));
            }
        })
    { }

    ~Thread()
    {
        lines.close();
        thread.join();
    }
};

Participant::Participant(Verbs own, std::function<Verbs()> ofThread)
    : m_verbs(std::move(own))
    , m_verbsOfThread(std::move(ofThread))
{ }

Participant::~Participant() = default;

std::string Participant::perform(std::string line)
{
    if (line.back() == '!') {
        line.pop_back();
        std::cout << "begun" << std::endl;
    }
    if (std::isdigit(line.front()) == 0) {
        return performWith(m_verbs, line);
    }
    const std::size_t blank = line.find(' ');
    std::unique_ptr<Thread>& thread = m_threads[line.substr(0, blank)];
    if (!thread) {
        thread = std::make_unique<Thread>(m_verbsOfThread);
    }
    thread->lines.push(line.substr(blank));
    return thread->answers.pop().value();
}

void Participant::serve(const std::function<std::string(const std::string& line)>& perform)
{
    std::filesystem::current_path(std::filesystem::temp_directory_path());
    for (std::string line; std::getline(std::cin, line);) {
        std::cout << perform(line) << std::endl;
    }
}
