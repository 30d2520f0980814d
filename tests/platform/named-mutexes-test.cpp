// What users of the named mutexes rely on, on every system.

#include "agent.h"

#include <algorithm>
#include <array>
#include <doctest/doctest.h>
#include <list>
#include <memory>

namespace {

using Handle = Agent::Handle;
using Handles = Agent::Handles;
using Names = std::vector<std::u16string>;

const Answer missing { 0, ERROR_FILE_NOT_FOUND };
const Answer notOwner { FALSE, ERROR_NOT_OWNER };

/** Time for what must not happen. Nothing that has to happen depends on it. */
void giveFaultsTime()
{
    Sleep(50);
}

Names uniqueNames(std::size_t count)
{
    Names names(count);
    std::generate(names.begin(), names.end(), uniqueName);
    return names;
}

Handles createAll(Agent& agent, const Names& names)
{
    Handles handles(names.size());
    std::transform(names.begin(), names.end(), handles.begin(),
        [&agent](const std::u16string& name) { return agent.create(name); });
    return handles;
}

/** How many of them the agent finds free, one by one. */
std::size_t countFree(Agent& agent, const Handles& handles)
{
    return static_cast<std::size_t>(std::count_if(handles.begin(), handles.end(),
        [&agent](Handle handle) { return agent.tryPass({ handle }) == owned; }));
}

bool exists(Agent& agent, const std::u16string& name)
{
    const Answer opened = agent.tryOpen(name);
    CHECK((opened == missing || agent.close(opened.result) == done));
    return opened.result != 0;
}

} // namespace

TEST_CASE("Only one owns a mutex at a time")
{
    const std::u16string name = uniqueName();
    AgentThread owner;
    const Handle handle = owner.create(name);
    AgentProcess process;
    AgentThread thread;
    const std::array<std::pair<Agent*, Handle>, 3> rivals { {
        { &process, process.open(name) },
        { &thread, thread.open(name) },
        { &thread, handle },
    } };
    for (const auto& [rival, rivalsHandle] : rivals) {
        CAPTURE(rivalsHandle);
        CHECK(owner.take({ handle }) == owned);
        CHECK(rival->tryTake({ rivalsHandle }) == busy);
        CHECK(rival->release({ rivalsHandle }) == notOwner);
        rival->beginTake({ rivalsHandle });
        giveFaultsTime();
        CHECK_FALSE(rival->hasAnswered());

        CHECK(owner.release({ handle }) == done);
        CHECK(rival->answer() == owned);
        CHECK(owner.tryTake({ handle }) == busy);
        CHECK(owner.release({ handle }) == notOwner);
        CHECK(rival->release({ rivalsHandle }) == done);
    }
}

TEST_CASE("Waits for single mutexes and for several, in any order, neither meet nor block each other")
{
    const Names names = uniqueNames(3);
    std::array<AgentProcess, 3> processes;
    std::array<AgentThread, 3> threads;
    const Handles shared = createAll(threads[1], { names[2], names[0] });
    const std::array<std::pair<Agent*, Handles>, 6> agents { {
        { &processes[0], createAll(processes[0], names) },
        { &processes[1], createAll(processes[1], { names[2], names[1], names[0] }) },
        { &processes[2], createAll(processes[2], { names[0] }) },
        { &threads[0], createAll(threads[0], { names[1], names[2], names[0] }) },
        { &threads[1], shared },
        { &threads[2], { shared[1] } },
    } };
    for (const auto& [agent, handles] : agents) {
        agent->meetAt(names[0]);
    }
    for (const auto& [agent, handles] : agents) {
        agent->beginPasses(300, INFINITE, handles);
    }
    std::uint64_t passes = 0;
    for (const auto& [agent, handles] : agents) {
        const Answer counted = agent->answer();
        CHECK(counted.error == 0);
        passes += counted.result;
    }
    CHECK(passes > 0);
}

TEST_CASE("An owner is let in again by the handle that it took, and releases as often")
{
    AgentThread owner;
    AgentProcess rival;
    const Names names = uniqueNames(2);
    const Handles handles = createAll(owner, names);
    const Handle second = owner.open(names[0]);
    const Handle rivals = rival.open(names[0]);
    CHECK(owner.take({ handles[0] }) == owned);
    CHECK(owner.tryTake({ handles[0] }) == owned);
    CHECK(owner.take(handles) == owned);
    for (int releases = 0; releases < 3; ++releases) {
        CHECK(rival.tryTake({ rivals }) == busy);
        CHECK(owner.release({ handles[0] }) == done);
    }
    CHECK(owner.release({ handles[0] }) == notOwner);
    CHECK(rival.tryTake({ rivals }) == owned);
    CHECK(rival.release({ rivals }) == done);

    CHECK(owner.take({ handles[0] }) == owned);
    CHECK(owner.tryTake({ second }) == (secondHandleContends ? busy : owned));
}

TEST_CASE("A mutex exists while a handle on it does, in whatever process")
{
    AgentThread home;
    AgentProcess first;
    for (const bool isClosed : { true, false }) {
        for (const bool isTaken : { true, false }) {
            CAPTURE(isClosed);
            CAPTURE(isTaken);
            AgentProcess second;
            const std::u16string name = uniqueName();
            CHECK(home.tryOpen(name) == missing);
            const Answer created = first.tryCreate(name);
            CHECK(created.error == ERROR_SUCCESS);
            const Answer again = home.tryCreate(name);
            CHECK(again.error == ERROR_ALREADY_EXISTS);
            CHECK(home.close(again.result) == done);
            CHECK(exists(home, name));

            const Handle last = second.open(name);
            CHECK(first.close(created.result) == done);
            CHECK(exists(home, name));
            CHECK((!isTaken || second.take({ last }) == owned));
            CHECK((!isTaken || !isClosed || second.release({ last }) == done));
            isClosed ? static_cast<void>(second.close(last)) : second.end();
            CHECK_FALSE(exists(home, name));
            CHECK_FALSE(exists(first, name));
            CHECK(home.tryTake({ home.create(name) }) == owned);
        }
    }
}

TEST_CASE("One next owner is told that the last one ended without a release")
{
    const Names names = uniqueNames(2);
    AgentThread home;
    AgentProcess modest;
    AgentProcess greedy;
    const Handle shared = home.create(names[0]);
    const std::array<std::pair<Agent*, Handles>, 3> others { {
        { &home, { shared } },
        { &modest, { modest.create(names[0]) } },
        { &greedy, createAll(greedy, names) },
    } };
    for (const std::string owners : { "process", "thread", "thread that shares the handle" }) {
        for (std::size_t next = 0; next <= others.size(); ++next) {
            CAPTURE(owners);
            CAPTURE(next);
            AgentProcess process;
            AgentThread thread;
            Agent& owner = owners == "process" ? static_cast<Agent&>(process) : thread;
            const Handle handle = owners == "thread that shares the handle" ? shared : owner.open(names[0]);
            CHECK(owner.take({ handle }) == owned);
            CHECK(owner.take({ handle }) == owned);
            if (next < others.size()) {
                owner.end();
                CHECK(others[next].first->pass(others[next].second) == abandoned);
                CHECK(home.pass({ shared }) == owned);
                continue;
            }
            for (const auto& [agent, handles] : others) {
                agent->beginPass(handles);
            }
            giveFaultsTime();
            owner.end();
            std::vector<Answer> answers;
            for (const auto& [agent, handles] : others) {
                answers.push_back(agent->answer());
            }
            CHECK(std::count(answers.begin(), answers.end(), abandoned) == 1);
            CHECK(std::count(answers.begin(), answers.end(), owned) == 2);
        }
    }
}

TEST_CASE("Who is killed at any moment does not block the others")
{
    const Names names = uniqueNames(2);
    AgentThread home;
    AgentProcess bystander;
    const Handles handles = createAll(home, names);
    bystander.beginPasses(3600000, INFINITE, createAll(bystander, names));
    for (unsigned round = 0; round < 20; ++round) {
        CAPTURE(round);
        AgentProcess victim;
        victim.beginPasses(3600000, INFINITE, createAll(victim, { names[1], names[0] }));
        Sleep(round % 7);
        victim.end();
        const Answer next = home.pass(handles);
        CHECK((next == owned || next == abandoned));
        CHECK(home.pass(handles) == owned);
    }
}

TEST_CASE("A wait for all takes all or none")
{
    for (const std::size_t count : { std::size_t { 2 }, std::size_t { MAXIMUM_WAIT_OBJECTS } }) {
        CAPTURE(count);
        const Names names = uniqueNames(count);
        AgentThread taker;
        AgentThread watcher;
        AgentProcess holder;
        const Handles handles = createAll(taker, names);
        const Handles holders = createAll(holder, names);
        for (const std::size_t held : { std::size_t { 0 }, count / 2, count - 1 }) {
            CAPTURE(held);
            CHECK(holder.take({ holders[held] }) == owned);
            CHECK(taker.tryTake(handles) == busy);
            CHECK(countFree(watcher, handles) == count - 1);
            taker.beginTake(handles);
            giveFaultsTime();
            CHECK_FALSE(taker.hasAnswered());
            CHECK(countFree(watcher, handles) == count - 1);
            CHECK(holder.release({ holders[held] }) == done);
            CHECK(taker.answer() == owned);
            CHECK(countFree(holder, holders) == 0);
            CHECK(taker.release(handles) == done);
        }
        CHECK(holder.take({ holders[0] }) == owned);
        taker.beginTake(handles);
        giveFaultsTime();
        holder.end();
        CHECK(taker.answer() == abandoned);
        CHECK(taker.release(handles) == done);
        CHECK(taker.tryPass(handles) == owned);
    }
}

TEST_CASE("Who waits for two and gets one does not take it from others even for a moment")
{
    const Names names = uniqueNames(2);
    AgentThread keeper;
    AgentProcess trying;
    AgentProcess waiting;
    AgentProcess modest;
    const Handles handles = createAll(keeper, names);
    for (const std::size_t kept : { 0, 1 }) {
        CAPTURE(kept);
        CHECK(keeper.take({ handles[kept] }) == owned);
        waiting.beginPass(createAll(waiting, names));
        trying.beginPasses(600, 0, createAll(trying, names));
        modest.beginPasses(500, 0, { modest.open(names[1 - kept]) });
        CHECK(trying.answer().result == 0);
        CHECK(modest.answer().error == 0);
        CHECK_FALSE(waiting.hasAnswered());

        CHECK(keeper.release({ handles[kept] }) == done);
        CHECK(waiting.answer() == owned);
    }
}

TEST_CASE("A wait that makes no sense fails, and takes nothing")
{
    AgentThread agent;
    AgentThread other;
    const Names names = uniqueNames(MAXIMUM_WAIT_OBJECTS + 1);
    const Handles many = createAll(agent, names);
    const Answer badHandle { WAIT_FAILED, ERROR_INVALID_HANDLE };
    const Answer badParameter { WAIT_FAILED, ERROR_INVALID_PARAMETER };
    CHECK(agent.take({ 0 }) == badHandle);
    CHECK(agent.tryTake({ many[0], 0 }) == badHandle);
    CHECK(agent.tryTake({}) == badParameter);
    CHECK(agent.tryTake(many) == badParameter);
    if (doublesAreRefused) {
        CHECK(agent.tryTake({ many[0], many[1], many[0] }) == badParameter);
        CHECK(agent.tryTake({ many[0], agent.create(names[0]) }) == badParameter);
    }
    CHECK(agent.release({ 0 }) == Answer { FALSE, ERROR_INVALID_HANDLE });
    CHECK(agent.close(0) == Answer { FALSE, ERROR_INVALID_HANDLE });
    CHECK(countFree(other, many) == many.size());
}

TEST_CASE("Names are told apart by every character")
{
    const std::u16string common = uniqueName();
    const std::u16string filler(longestName - common.size() - 1, u'x');
    Names names { common + filler + u'a', common + filler + u'b', common + filler };
    for (const char16_t* ending : { u"", u" ", u"  ", u"A", u"a", u"\n", u"\r\n", u"/", u"//", u"../x", u".",
             u"*", u"%", u"%20", u"%s%n", u"\u00e9", u"e\u0301", u"\U0001F600", u"\U0001F601", u"\xD83D",
             u"\xDE00", u"\xFFFD", u"\u0100", u"\x0001" }) {
        names.push_back(common + ending);
    }
    AgentThread home;
    AgentProcess other;
    for (const std::u16string& name : names) {
        CHECK(other.tryOpen(name) == missing);
        const Answer created = home.tryCreate(name);
        CHECK(created.error == ERROR_SUCCESS);
        CHECK(other.tryTake({ other.open(name) }) == owned);
        CHECK(home.tryTake({ created.result }) == busy);
    }
}

TEST_CASE("Who opens a mutex meets the others even as the last of them closes it")
{
    CHECK(failuresOfRace(8, 100) == 0);
    CHECK(failuresOfRace(2, 1000) == 0);
}
