#include "platform/named-mutex_p.h"

#include <algorithm>

namespace vantkit::internal {

using Answer = MutexFile::Answer;

/**
 * Being behind the gates of several mutexes, and alone with their handles. All enter in the same order, so
 * that no two wait for each other.
 */
class NamedMutex::Behind
{
public:
    explicit Behind(const List& sorted)
        : m_mutexes(sorted)
    {
        for (const auto& mutex : sorted) {
            m_guards.emplace_back(mutex->m_guard);
        }
        while (m_entered < sorted.size() && sorted[m_entered]->m_file.enterGate()) {
            ++m_entered;
        }
    }

    Behind(const Behind&) = delete;
    Behind& operator=(const Behind&) = delete;

    ~Behind()
    {
        while (m_entered > 0) {
            m_mutexes[--m_entered]->m_file.leaveGate();
        }
    }

    bool all() const { return m_entered == m_mutexes.size(); }

private:
    const List& m_mutexes;
    std::vector<std::unique_lock<std::mutex>> m_guards;
    size_t m_entered = 0;
};

NamedMutex::NamedMutex(const MutexDirectory& directory, const std::u16string& name)
    : m_file(directory, name)
{ }

DWORD NamedMutex::tryToTake()
{
    {
        const std::lock_guard<std::mutex> guard(m_guard);
        const Answer taken = isTaken() ? tryOwnership() : m_file.take();
        if (taken == Answer::Yes) {
            return complete();
        }
        if (taken == Answer::Failure) {
            return WAIT_FAILED;
        }
    }
    // Perhaps it is only being tried. Behind the gate that is told from being owned.
    return tryToTakeAll({ shared_from_this() });
}

DWORD NamedMutex::take()
{
    const DWORD result = tryToTake();
    return result == WAIT_TIMEOUT ? takeAll({ shared_from_this() }) : result;
}

DWORD NamedMutex::tryToTakeAll(List mutexes)
{
    sort(mutexes);
    NamedMutex* busy = nullptr;
    return attempt(mutexes, busy);
}

DWORD NamedMutex::takeAll(List mutexes)
{
    sort(mutexes);
    while (true) {
        NamedMutex* busy = nullptr;
        const DWORD result = attempt(mutexes, busy);
        if (result != WAIT_TIMEOUT) {
            return result;
        }
        if (!busy->m_file.waitUntilFree()) {
            return WAIT_FAILED;
        }
    }
}

void NamedMutex::sort(List& mutexes)
{
    std::sort(mutexes.begin(), mutexes.end(),
        [](const auto& one, const auto& other) { return one->m_file.isBefore(other->m_file); });
}

bool NamedMutex::areDifferent(List mutexes)
{
    sort(mutexes);
    return std::adjacent_find(mutexes.begin(), mutexes.end(), [](const auto& one, const auto& next) {
        return one->m_file.isSameAs(next->m_file);
    }) == mutexes.end();
}

DWORD NamedMutex::attempt(const List& sorted, NamedMutex*& busy)
{
    const Behind gates(sorted);
    if (!gates.all()) {
        return WAIT_FAILED;
    }
    for (size_t i = 0; i < sorted.size(); ++i) {
        const Answer owned = sorted[i]->tryOwnership();
        if (owned != Answer::Yes) {
            std::for_each_n(sorted.begin(), i, [](const auto& mutex) { mutex->drop(); });
            busy = sorted[i].get();
            return owned == Answer::No ? WAIT_TIMEOUT : WAIT_FAILED;
        }
    }
    return completeAll(sorted);
}

DWORD NamedMutex::completeAll(const List& owned)
{
    DWORD result = WAIT_OBJECT_0;
    for (size_t i = 0; i < owned.size(); ++i) {
        const DWORD one = owned[i]->complete();
        if (one == WAIT_FAILED) {
            std::for_each_n(owned.begin(), i, [](const auto& mutex) { mutex->giveBack(); });
            std::for_each(owned.begin() + static_cast<std::ptrdiff_t>(i), owned.end(),
                [](const auto& mutex) { mutex->drop(); });
            return WAIT_FAILED;
        }
        result = std::max(result, one);
    }
    return result;
}

/** Through this handle the thread that owns the mutex is always let in, and no other one. */
Answer NamedMutex::tryOwnership()
{
    if (isTaken()) {
        return m_owner == std::this_thread::get_id() ? Answer::Yes : Answer::No;
    }
    return m_file.tryOwnership();
}

/** Makes the caller the owner of what it has taken the ownership of. */
DWORD NamedMutex::complete()
{
    if (isTaken()) {
        ++m_timesTaken;
        return WAIT_OBJECT_0;
    }
    const Answer abandoned = m_file.confirmOwnership() ? m_file.noteOwner() : Answer::Failure;
    if (abandoned == Answer::Failure) {
        drop();
        return WAIT_FAILED;
    }
    m_owner = std::this_thread::get_id();
    m_timesTaken = 1;
    return abandoned == Answer::Yes ? WAIT_ABANDONED : WAIT_OBJECT_0;
}

void NamedMutex::drop()
{
    if (!isTaken()) {
        m_file.dropOwnership();
    }
}

void NamedMutex::giveBack()
{
    if (--m_timesTaken == 0) {
        m_owner = {};
        m_file.removeNote();
        m_file.dropOwnership();
    }
}

bool NamedMutex::release()
{
    const std::lock_guard<std::mutex> guard(m_guard);
    if (m_owner != std::this_thread::get_id()) {
        errno = EPERM;
        return false;
    }
    giveBack();
    return true;
}

void NamedMutex::abandon(std::thread::id thread)
{
    const std::lock_guard<std::mutex> guard(m_guard);
    if (m_owner == thread) {
        m_owner = {};
        m_timesTaken = 0;
        m_file.dropOwnership();
    }
}

} // namespace vantkit::internal
