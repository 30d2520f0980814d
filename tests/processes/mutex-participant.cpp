// A participant without Qt and without the kit.

#include "processes/participant.h"
#include "processes/system.h"

int main()
{
    Verbs verbs = mutexVerbs();
    verbs.merge(systemVerbs());
    serve(verbs, mutexVerbs);
}
