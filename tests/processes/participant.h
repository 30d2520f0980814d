#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

/** What can be done, by name: with the words that follow, and with an answer. */
using Verbs = std::map<std::string, std::function<std::string(const Words&)>>;

std::string yesOrNo(bool yes);

/** What can be done with named mutexes; see mutex-verbs.cpp. */
Verbs mutexVerbs();

/**
 * The other side of a Scene: does what it is told, a line at a time, and answers each on a line.
 *
 * A line is a verb and its words. A number before the verb says which thread does it instead of the main one.
 * With a "!" at the end of the line, "begun" is said first.
 */
class Participant
{
public:
    /** Each thread has verbs of its own, which @p ofThread gives. */
    Participant(Verbs own, std::function<Verbs()> ofThread);
    ~Participant();

    Participant(const Participant&) = delete;
    Participant& operator=(const Participant&) = delete;

    std::string perform(std::string line);

    /** Goes to the folder of temporary files, and has each line of the input performed until that ends. */
    static void serve(const std::function<std::string(const std::string& line)>& perform);

private:
    struct Thread;

    Verbs m_verbs;
    std::function<Verbs()> m_verbsOfThread;
    std::map<std::string, std::unique_ptr<Thread>> m_threads;
};
