// A participant without Qt and without the kit.

#include "processes/participant.h"
#include "processes/system.h"

int main()
{
    Verbs verbs = mutexVerbs();
    verbs.merge(systemVerbs());
    Participant participant(verbs, mutexVerbs);
    Participant::serve([&](const std::string& line) { return participant.perform(line); });
}
