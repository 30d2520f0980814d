#pragma once

#include "platform/named-mutex_p.h"

#include <map>

namespace vantkit::internal {

/** The handles that this process has open. One that it has closed, or never had, is told from them. */
class HandleTable
{
public:
    /** Lives as long as the process, so that handles may be closed while it ends. */
    static HandleTable& ofProcess();

    HANDLE add(std::shared_ptr<NamedMutex> mutex);
    /** Null if the handle is none. */
    std::shared_ptr<NamedMutex> find(HANDLE handle);
    /**
     * Takes the handle out; what it gives is the last thing that holds the mutex, but for
     * threads that wait for it.
     */
    std::shared_ptr<NamedMutex> remove(HANDLE handle);

    /** Has everything that this thread owns abandoned when it ends. */
    void watchThread();

private:
    class ThreadEnd;

    void abandonAllOf(std::thread::id thread);

    std::mutex m_guard;
    std::map<HANDLE, std::shared_ptr<NamedMutex>> m_mutexes;
};

} // namespace vantkit::internal
