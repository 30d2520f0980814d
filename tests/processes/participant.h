#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

/** What can be done, by name: with the words that follow, and with an answer. */
using Verbs = std::map<std::string, std::function<std::string(const Words&)>>;

std::string yesOrNo(bool yes);

/** What can be done with named mutexes; see mutex-verbs.cpp. */
Verbs mutexVerbs();

/**
 * The other side of a Scene, in its folder: does what each line of the input tells, until that ends, and
 * answers with a line.
 *
 * A line is a verb and its words. A number before the verb says which thread does it instead of this one;
 * each has verbs of its own, which @p ofThread gives. With a "!" at the end of the line, "begun" is said
 * first.
 */
void serve(const Verbs& own, const std::function<Verbs()>& ofThread);
