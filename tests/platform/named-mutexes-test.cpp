// What users of the named mutexes rely on, on every system.

#include "agent.h"
#include "counter-race.h"
#include "system.h"

#include <algorithm>
#include <array>
#include <doctest/doctest.h>
#include <list>
#include <memory>

using namespace std::chrono_literals;

namespace {

using Handle = Agent::Handle;
using Handles = Agent::Handles;

const Answer missing { 0, ERROR_FILE_NOT_FOUND };

/** Time for what must not happen. Nothing that has to happen depends on it. */
void giveFaultsTime()
{
    Sleep(50);
}

std::vector<std::u16string> uniqueNames(std::size_t count)
{
    std::vector<std::u16string> names(count);
    std::generate(names.begin(), names.end(), uniqueName);
    return names;
}

Handles createAll(Agent& agent, const std::vector<std::u16string>& names)
{
    Handles handles;
    for (const std::u16string& name : names) {
        handles.push_back(agent.create(name));
    }
    return handles;
}

Handles reversed(Handles handles)
{
    std::reverse(handles.begin(), handles.end());
    return handles;
}

/** All but the one with that index. */
Handles without(Handles handles, std::size_t index)
{
    handles.erase(handles.begin() + static_cast<std::ptrdiff_t>(index));
    return handles;
}

/** How many of them the agent finds free, one by one. */
std::size_t countFree(Agent& agent, const Handles& handles)
{
    return static_cast<std::size_t>(std::count_if(handles.begin(), handles.end(), [&agent](Handle handle) {
        const bool isFree = agent.tryTake(handle) == owned;
        if (isFree) {
            agent.releaseAll({ handle });
        }
        return isFree;
    }));
}

bool exists(Agent& agent, const std::u16string& name)
{
    const Answer opened = agent.tryOpen(name);
    if (opened.result != 0) {
        agent.close(opened.result);
    } else {
        CHECK(opened == missing);
    }
    return opened.result != 0;
}

using Results = std::vector<std::uint64_t>;

struct Waiter
{
    Agent* agent;
    Handles handles;
};

std::list<Waiter>::iterator firstWithAnswer(std::list<Waiter>& waiters)
{
    return std::find_if(
        waiters.begin(), waiters.end(), [](const Waiter& waiter) { return waiter.agent->hasAnswered(); });
}

/** The results in the order in which they come. Each waiter releases what it got once the others had time. */
Results resultsInTurn(std::list<Waiter> waiters)
{
    Results results;
    for (int tries = 0; tries < 20000 && !waiters.empty(); ++tries) {
        const auto next = firstWithAnswer(waiters);
        if (next == waiters.end()) {
            Sleep(1);
            continue;
        }
        const Waiter owner = *next;
        waiters.erase(next);
        results.push_back(owner.agent->answer().result);
        giveFaultsTime();
        CHECK(firstWithAnswer(waiters) == waiters.end());
        owner.agent->releaseAll(owner.handles);
    }
    return results;
}

} // namespace

TEST_CASE("Only one owns a mutex at a time")
{
    const std::u16string name = uniqueName();
    AgentThread owner;
    const Handle handle = owner.create(name);
    std::unique_ptr<Agent> rival;
    Handle rivalsHandle = handle;
    SUBCASE("among processes")
    {
        rival = std::make_unique<AgentProcess>();
        rivalsHandle = rival->open(name);
    }
    SUBCASE("among threads")
    {
        rival = std::make_unique<AgentThread>();
        rivalsHandle = rival->open(name);
    }
    SUBCASE("among threads that share a handle")
    {
        rival = std::make_unique<AgentThread>();
    }

    CHECK(owner.take(handle) == owned);
    CHECK(rival->tryTake(rivalsHandle) == busy);
    CHECK(rival->tryTakeAll({ rivalsHandle }) == busy);
    rival->beginTake(rivalsHandle);
    giveFaultsTime();
    CHECK_FALSE(rival->hasAnswered());

    CHECK(owner.release(handle).result == 1);
    CHECK(rival->answer().result == owned);
    CHECK(owner.tryTake(handle) == busy);
    CHECK(rival->release(rivalsHandle).result == 1);
    CHECK(owner.tryTake(handle) == owned);
}

TEST_CASE("Waits for single mutexes and for several, in any order, neither meet nor block each other")
{
    const std::u16string a = uniqueName();
    const std::u16string b = uniqueName();
    const std::u16string c = uniqueName();
    std::array<AgentProcess, 3> processes;
    std::array<AgentThread, 3> threads;
    const Handles ofFirst = createAll(processes[0], { a, b, c });
    const Handles ofSecond = createAll(processes[1], { c, b, a });
    const Handles ofThird = createAll(processes[2], { a });
    const Handles own = createAll(threads[0], { b, c, a });
    const Handles shared = createAll(threads[1], { c, a });

    const CounterFile file; // what all take guards it
    std::vector<Agent*> agents;
    const auto begin = [&](Agent& agent, const Handles& handles) {
        agents.push_back(&agent);
        agent.beginTurns(300ms, handles, file.path());
    };
    begin(processes[0], ofFirst);
    begin(processes[1], ofSecond);
    begin(processes[2], ofThird);
    begin(threads[0], own);
    begin(threads[1], shared);
    begin(threads[2], { shared[1] });

    std::uint64_t turns = 0;
    for (Agent* agent : agents) {
        const Answer counted = agent->answer();
        CHECK(counted.error == 0);
        turns += counted.result;
    }
    CHECK(turns > 0);
    CHECK(file.number() == turns);
}

TEST_CASE("An owner is let in again by the handle that it took, and releases as often")
{
    AgentThread owner;
    AgentProcess rival;
    const auto names = uniqueNames(2);
    const Handles handles = createAll(owner, names);
    const Handle rivals = rival.open(names[0]);
    CHECK(owner.take(handles[0]) == owned);
    CHECK(owner.take(handles[0]) == owned);
    CHECK(owner.tryTake(handles[0]) == owned);
    CHECK(owner.takeAll(handles) == owned);
    for (int releases = 0; releases < 4; ++releases) {
        CHECK(rival.tryTake(rivals) == busy);
        CHECK(owner.release(handles[0]).result == 1);
    }
    CHECK(owner.release(handles[0]) == Answer { 0, ERROR_NOT_OWNER });
    CHECK(rival.tryTake(rivals) == owned);
}

TEST_CASE("A second handle of the owner's own thread")
{
    AgentThread owner;
    const std::u16string name = uniqueName();
    const Handle first = owner.create(name);
    const Handle second = owner.open(name);
    CHECK(owner.take(first) == owned);
    CHECK(owner.tryTake(second) == (secondHandleContends ? busy : owned));
    CHECK(owner.release(first).result == 1);
    CHECK(owner.tryTake(second) == owned);
}

TEST_CASE("Only the owner releases")
{
    AgentThread owner;
    AgentThread other;
    AgentProcess process;
    const std::u16string name = uniqueName();
    const Handle handle = owner.create(name);
    const Handle processHandle = process.open(name);
    const Answer refused { 0, ERROR_NOT_OWNER };
    CHECK(owner.release(handle) == refused);
    CHECK(owner.take(handle) == owned);
    CHECK(other.release(handle) == refused);
    CHECK(other.release(other.open(name)) == refused);
    CHECK(process.release(processHandle) == refused);
    CHECK(process.tryTake(processHandle) == busy);
    CHECK(other.tryTake(handle) == busy);
    CHECK(owner.release(handle).result == 1);
}

TEST_CASE("A mutex exists while a handle on it does, in whatever process")
{
    AgentThread home;
    AgentProcess first;
    AgentProcess second;
    const std::u16string name = uniqueName();
    CHECK(home.tryOpen(name) == missing);

    const Answer created = first.tryCreate(name);
    CHECK(created.result != 0);
    CHECK(created.error == ERROR_SUCCESS);
    const Answer again = home.tryCreate(name);
    CHECK(again.result != 0);
    CHECK(again.error == ERROR_ALREADY_EXISTS);
    CHECK(home.close(again.result).result == 1);
    CHECK(exists(home, name));

    const Handle last = second.open(name);
    CHECK(first.close(created.result).result == 1);
    CHECK(exists(home, name));
    SUBCASE("closed")
    {
        CHECK(second.close(last).result == 1);
    }
    SUBCASE("closed after use")
    {
        CHECK(second.take(last) == owned);
        second.releaseAll({ last });
        CHECK(second.close(last).result == 1);
    }
    SUBCASE("gone with its process")
    {
        second.kill();
    }
    SUBCASE("gone with its owner")
    {
        CHECK(second.take(last) == owned);
        second.kill();
    }
    CHECK_FALSE(exists(home, name));
    CHECK_FALSE(exists(first, name));

    const Answer fresh = home.tryCreate(name);
    CHECK(fresh.error == ERROR_SUCCESS);
    CHECK(home.tryTake(fresh.result) == owned);
}

TEST_CASE("One next owner is told that the last one was killed")
{
    const auto names = uniqueNames(2);
    AgentProcess owner;
    AgentThread thread;
    std::list<AgentProcess> processes(3);
    const Handle handle = owner.create(names[0]);
    CHECK(owner.take(handle) == owned);
    CHECK(owner.take(handle) == owned);

    std::list<Waiter> waiters { { &thread, { thread.open(names[0]) } } };
    for (AgentProcess& process : processes) {
        waiters.push_back({ &process, createAll(process, names) });
    }
    waiters.back().handles.pop_back();
    const auto beginAll = [&waiters] {
        for (Waiter& waiter : waiters) {
            waiter.agent->beginTakeAll(waiter.handles);
        }
    };

    SUBCASE("while others wait")
    {
        beginAll();
        giveFaultsTime();
        CHECK(firstWithAnswer(waiters) == waiters.end());
        owner.kill();
    }
    SUBCASE("and nobody waits yet")
    {
        owner.kill();
        beginAll();
    }
    CHECK(resultsInTurn(waiters) == Results { abandoned, owned, owned, owned });
}

TEST_CASE("One next owner is told that a thread ended as the owner")
{
    const std::u16string name = uniqueName();
    AgentThread home;
    AgentThread owner;
    AgentProcess process;
    const Waiter atHome { &home, { home.create(name) } };
    const Waiter elsewhere { &process, { process.open(name) } };
    const auto takeAndEnd = [&](Handle handle) {
        CHECK(owner.take(handle) == owned);
        SUBCASE("while others wait")
        {
            home.beginTake(atHome.handles[0]);
            process.beginTake(elsewhere.handles[0]);
            giveFaultsTime();
            owner.end();
            CHECK(resultsInTurn({ atHome, elsewhere }) == Results { abandoned, owned });
        }
        SUBCASE("and a thread of the process comes next")
        {
            owner.end();
            CHECK(home.take(atHome.handles[0]) == abandoned);
            home.releaseAll(atHome.handles);
            CHECK(process.take(elsewhere.handles[0]) == owned);
        }
        SUBCASE("and another process comes next")
        {
            owner.end();
            CHECK(process.take(elsewhere.handles[0]) == abandoned);
            process.releaseAll(elsewhere.handles);
            CHECK(home.take(atHome.handles[0]) == owned);
        }
    };
    SUBCASE("by a handle of its own")
    {
        takeAndEnd(home.open(name));
    }
    SUBCASE("by a handle that is shared")
    {
        takeAndEnd(atHome.handles[0]);
    }
}

TEST_CASE("A program that an owner started does not keep the mutex")
{
    const std::u16string name = uniqueName();
    AgentProcess owner;
    AgentThread other;
    CHECK(owner.take(owner.create(name)) == owned);
    owner.handOver();
    SUBCASE("owned")
    {
        const Handle handle = other.open(name);
        CHECK(other.tryTake(handle) == busy);
        owner.kill();
        CHECK(other.take(handle) == abandoned);
    }
    SUBCASE("in existence")
    {
        CHECK(exists(other, name));
        owner.kill();
        CHECK_FALSE(exists(other, name));
        CHECK(other.take(other.create(name)) == owned);
    }
    owner.processorTime(); // the program lives
}

TEST_CASE("Who is killed while it waits leaves nothing behind")
{
    const auto names = uniqueNames(2);
    AgentThread owner;
    AgentProcess waiter;
    AgentThread other;
    const Handles handles = createAll(owner, names);
    const Handles waitersHandles = createAll(waiter, names);
    CHECK(owner.take(handles[0]) == owned);
    SUBCASE("for one")
    {
        waiter.beginTake(waitersHandles[0]);
    }
    SUBCASE("for two")
    {
        waiter.beginTakeAll(waitersHandles);
    }
    giveFaultsTime();
    waiter.kill();
    CHECK(other.tryTake(handles[1]) == owned);
    CHECK(other.release(handles[1]).result == 1);
    owner.releaseAll({ handles[0] });
    CHECK(other.tryTakeAll(handles) == owned);
}

TEST_CASE("Who is killed at any moment does not block the others")
{
    const auto names = uniqueNames(2);
    AgentThread home;
    AgentProcess bystander;
    const Handles handles = createAll(home, names);
    bystander.beginTurns(1h, createAll(bystander, names));
    for (unsigned round = 0; round < 20; ++round) {
        CAPTURE(round);
        AgentProcess victim;
        victim.beginTurns(1h, reversed(createAll(victim, names)));
        Sleep(round % 7);
        victim.kill();
        const std::uint64_t next = home.takeAll(handles);
        CHECK((next == owned || next == abandoned));
        home.releaseAll(handles);
        CHECK(home.takeAll(handles) == owned);
        home.releaseAll(handles);
    }
    bystander.kill();
}

TEST_CASE("A wait for all takes all or none")
{
    std::size_t count = 0;
    SUBCASE("of one")
    {
        count = 1;
    }
    SUBCASE("of two")
    {
        count = 2;
    }
    SUBCASE("of 64")
    {
        count = MAXIMUM_WAIT_OBJECTS;
    }
    const auto names = uniqueNames(count);
    AgentThread taker;
    AgentProcess holder;
    const Handles handles = createAll(taker, names);
    const Handles holders = createAll(holder, names);
    for (const std::size_t held : { std::size_t { 0 }, count / 2, count - 1 }) {
        CAPTURE(held);
        CHECK(holder.take(holders[held]) == owned);
        CHECK(taker.tryTakeAll(handles) == busy);
        CHECK(countFree(holder, without(holders, held)) == count - 1);
        taker.beginTakeAll(handles);
        giveFaultsTime();
        CHECK_FALSE(taker.hasAnswered());
        CHECK(countFree(holder, without(holders, held)) == count - 1);

        holder.releaseAll({ holders[held] });
        CHECK(taker.answer().result == owned);
        CHECK(countFree(holder, holders) == 0);
        taker.releaseAll(handles);
        CHECK(countFree(holder, holders) == count);
    }
}

TEST_CASE("Who waits for two and gets one does not take it from others even for a moment")
{
    const auto names = uniqueNames(2);
    AgentThread keeper;
    AgentProcess greedy;
    AgentProcess greedyToo;
    AgentProcess modest;
    const Handles handles = createAll(keeper, names);
    const Handles greedyHandles = createAll(greedy, names);
    const Handles greedyTooHandles = createAll(greedyToo, names);
    for (const std::size_t kept : { 0, 1 }) {
        CAPTURE(kept);
        const Handle other = modest.open(names[1 - kept]);
        CHECK(keeper.take(handles[kept]) == owned);

        greedyToo.beginTakeAll(greedyTooHandles);
        greedy.beginAttempts(300ms, greedyHandles);
        modest.beginAttempts(200ms, { other });
        CHECK(greedy.answer().result == 0);
        CHECK(modest.answer().error == 0);
        CHECK_FALSE(greedyToo.hasAnswered());

        keeper.releaseAll({ handles[kept] });
        CHECK(greedyToo.answer().result == owned);
        greedyToo.releaseAll(greedyTooHandles);
    }
}

TEST_CASE("An abandoned one among many is told")
{
    const auto names = uniqueNames(MAXIMUM_WAIT_OBJECTS);
    AgentThread next;
    AgentProcess owner;
    const Handles handles = createAll(next, names);
    CHECK(owner.take(owner.open(names[17])) == owned);
    SUBCASE("trying")
    {
        owner.kill();
        CHECK(next.takeAll(handles) == abandoned);
    }
    SUBCASE("waiting")
    {
        next.beginTakeAll(handles);
        giveFaultsTime();
        owner.kill();
        CHECK(next.answer().result == abandoned);
    }
    next.releaseAll(handles);
    CHECK(next.tryTakeAll(handles) == owned);
}

TEST_CASE("A wait that makes no sense fails, and takes nothing")
{
    AgentThread agent;
    AgentThread other;
    const auto names = uniqueNames(MAXIMUM_WAIT_OBJECTS + 1);
    const Handles many = createAll(agent, names);
    const Answer badHandle { failed, ERROR_INVALID_HANDLE };
    const Answer badParameter { failed, ERROR_INVALID_PARAMETER };
    CHECK(agent.takeWithReason(0) == badHandle);
    CHECK(agent.tryTakeAllWithReason({ many[0], 0 }) == badHandle);
    CHECK(agent.tryTakeAllWithReason({}) == badParameter);
    CHECK(agent.tryTakeAllWithReason(many) == badParameter);
    if (doublesAreRefused) {
        CHECK(agent.tryTakeAllWithReason({ many[0], many[1], many[0] }) == badParameter);
        CHECK(agent.tryTakeAllWithReason({ many[0], agent.create(names[0]) }) == badParameter);
    }
    CHECK(agent.release(0) == Answer { 0, ERROR_INVALID_HANDLE });
    CHECK(agent.close(0) == Answer { 0, ERROR_INVALID_HANDLE });
    CHECK(countFree(other, many) == many.size());
}

TEST_CASE("Waiting costs no processor time")
{
    const auto names = uniqueNames(2);
    AgentThread owner;
    AgentProcess waiter;
    const Handles handles = createAll(owner, names);
    const Handles waitersHandles = createAll(waiter, names);
    const auto before = waiter.processorTime();
    SUBCASE("for one")
    {
        CHECK(owner.take(handles[0]) == owned);
        waiter.beginTake(waitersHandles[0]);
    }
    SUBCASE("for two")
    {
        CHECK(owner.takeAll({ handles[0] }) == owned);
        waiter.beginTakeAll(waitersHandles);
    }
    Sleep(400);
    owner.releaseAll({ handles[0] });
    CHECK(waiter.answer().result == owned);
    CHECK((waiter.processorTime() - before).count() < 100);
}

TEST_CASE("Names are told apart by every character")
{
    const std::u16string common = uniqueName();
    const std::u16string filler(longestName - common.size() - 1, u'x');
    std::vector<std::u16string> names { common + filler + u'a', common + filler + u'b', common + filler };
    for (const char16_t* ending : { u"", u" ", u"  ", u" a", u"A", u"a", u"a ", u"\n", u"\r\n", u"\t", u"\"",
             u"'", u"/", u"//", u"../x", u".", u"..", u"*", u"?", u"|", u":", u"%", u"%20", u"%s%n", u"$HOME",
             u"\u00e9", u"e\u0301", u"\u65e5\u672c", u"\U0001F600", u"\U0001F601", u"\xD83D", u"\xDE00",
             u"\xDE00\xD83D", u"\xFFFD", u"\xFFFF", u"\u0100", u"\x0001" }) {
        names.push_back(common + ending);
    }
    AgentThread home;
    AgentProcess other;
    Handles handles;
    for (std::size_t i = 0; i < names.size(); ++i) {
        CAPTURE(i);
        CHECK(other.tryOpen(names[i]) == missing);
        const Answer created = home.tryCreate(names[i]);
        CHECK(created.error == ERROR_SUCCESS);
        handles.push_back(created.result);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        CAPTURE(i);
        CHECK(countFree(home, { handles[i] }) == 1);
        CHECK(other.tryTake(other.open(names[i])) == owned);
        CHECK(home.tryTake(handles[i]) == busy);
    }
}

TEST_CASE("Who opens a mutex meets the others even as the last of them closes it")
{
    RaceOutcome outcome;
    SUBCASE("many of them")
    {
        outcome = raceForCounter(8, 100);
    }
    SUBCASE("one of them, often")
    {
        outcome = raceForCounter(2, 1000);
    }
    CHECK(outcome.counted == outcome.expected);
    CHECK(outcome.failures == 0);
    WARN(outcome.created > 10); // or it was hardly a race
    CHECK(outcome.nothingIsLeft);
}
