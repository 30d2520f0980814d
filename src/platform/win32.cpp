#include "platform/win32.h"

#include "platform/named-mutex_p.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <thread>
#include <vector>

using vantkit::internal::NamedMutex;

namespace {

thread_local int reasonOfFailure = 0;

template <typename Result>
Result failed(Result result)
{
    reasonOfFailure = errno;
    return result;
}

NamedMutex* mutexOf(HANDLE handle)
{
    return static_cast<NamedMutex*>(handle);
}

HANDLE opened(LPCWSTR name, bool mayCreate)
{
    auto mutex = std::make_unique<NamedMutex>(name, mayCreate);
    return mutex->open() ? mutex.release() : failed<HANDLE>(nullptr);
}

/** All or none. The one that was busy is the first of the next attempt, which waits for that one alone. */
bool lockAll(std::vector<NamedMutex*>& mutexes, bool mayWait)
{
    const auto first = mutexes.begin();
    for (auto next = first; next != mutexes.end(); ++next) {
        if (!(*next)->lock(mayWait && next == first)) {
            const int reason = errno;
            std::for_each(first, next, [](NamedMutex* mutex) { mutex->unlock(); });
            std::iter_swap(first, next);
            errno = reason;
            return false;
        }
    }
    return true;
}

} // namespace

HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES /*attributes*/, BOOL /*initiallyOwned*/, LPCWSTR name)
{
    return opened(name, true);
}

HANDLE OpenMutexW(DWORD /*access*/, BOOL /*inherited*/, LPCWSTR name)
{
    return opened(name, false);
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    return WaitForMultipleObjects(1, &handle, TRUE, milliseconds);
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL /*all*/, DWORD milliseconds)
{
    std::vector<NamedMutex*> mutexes;
    std::transform(handles, std::next(handles, count), std::back_inserter(mutexes), mutexOf);
    if (std::count(mutexes.begin(), mutexes.end(), nullptr) > 0) {
        errno = EBADF;
        return failed(WAIT_FAILED);
    }
    const bool mayWait = milliseconds != 0;
    while (!lockAll(mutexes, mayWait)) {
        if (errno != EAGAIN) {
            return failed(WAIT_FAILED);
        }
        if (!mayWait) {
            return WAIT_TIMEOUT;
        }
    }
    const auto abandoned =
        std::count_if(mutexes.begin(), mutexes.end(), [](NamedMutex* mutex) { return mutex->own(); });
    return abandoned > 0 ? WAIT_ABANDONED : WAIT_OBJECT_0;
}

BOOL ReleaseMutex(HANDLE handle)
{
    return handle && mutexOf(handle)->release() ? TRUE : failed(FALSE);
}

BOOL CloseHandle(HANDLE handle)
{
    delete mutexOf(handle);
    return TRUE;
}

DWORD GetLastError()
{
    errno = reasonOfFailure;
    return reasonOfFailure == ENOENT ? ERROR_FILE_NOT_FOUND : ERROR_GEN_FAILURE;
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

void Sleep(DWORD milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
