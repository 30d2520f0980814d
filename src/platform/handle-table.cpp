#include "platform/handle-table_p.h"

#include <unistd.h>

namespace vantkit::internal {

class HandleTable::ThreadEnd
{
public:
    ThreadEnd() = default;
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;

    // What the first thread owns ends with the process, after the destructors of its static objects.
    ~ThreadEnd()
    {
        if (gettid() != getpid()) {
            ofProcess().abandonAllOf(std::this_thread::get_id());
        }
    }

    void watch() { }
};

HandleTable& HandleTable::ofProcess()
{
    static auto& table = *new HandleTable;
    return table;
}

HANDLE HandleTable::add(std::shared_ptr<NamedMutex> mutex)
{
    const std::lock_guard<std::mutex> guard(m_guard);
    HANDLE handle = mutex.get();
    m_mutexes.emplace(handle, std::move(mutex));
    return handle;
}

std::shared_ptr<NamedMutex> HandleTable::find(HANDLE handle)
{
    const std::lock_guard<std::mutex> guard(m_guard);
    const auto found = m_mutexes.find(handle);
    return found != m_mutexes.end() ? found->second : nullptr;
}

std::shared_ptr<NamedMutex> HandleTable::remove(HANDLE handle)
{
    const std::lock_guard<std::mutex> guard(m_guard);
    const auto found = m_mutexes.find(handle);
    if (found == m_mutexes.end()) {
        return nullptr;
    }
    std::shared_ptr<NamedMutex> mutex = std::move(found->second);
    m_mutexes.erase(found);
    return mutex;
}

void HandleTable::watchThread()
{
    thread_local ThreadEnd end;
    end.watch();
}

void HandleTable::abandonAllOf(std::thread::id thread)
{
    const std::lock_guard<std::mutex> guard(m_guard);
    for (const auto& entry : m_mutexes) {
        entry.second->abandon(thread);
    }
}

} // namespace vantkit::internal
