#include "platform/handle-table_p.h"
#include "platform/last-error_p.h"

#include <algorithm>
#include <iterator>

using namespace vantkit::internal;

namespace {

using Answer = MutexFile::Answer;

DWORD failed(DWORD code)
{
    setLastError(code);
    return WAIT_FAILED;
}

bool isKnown(DWORD milliseconds)
{
    return milliseconds == 0 || milliseconds == INFINITE;
}

DWORD told(DWORD result)
{
    if (result == WAIT_FAILED) {
        setLastErrorFromErrno();
    } else if (result != WAIT_TIMEOUT) {
        HandleTable::ofProcess().watchThread();
    }
    return result;
}

NamedMutex::List find(DWORD count, const HANDLE* handles)
{
    NamedMutex::List mutexes;
    std::transform(handles, std::next(handles, count), std::back_inserter(mutexes),
        [](HANDLE handle) { return HandleTable::ofProcess().find(handle); });
    return mutexes;
}

} // namespace

HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES attributes, BOOL initiallyOwned, LPCWSTR name)
{
    if (attributes || initiallyOwned || !name) {
        setLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto mutex = std::make_shared<NamedMutex>(MutexDirectory::ofUser(), name);
    const Answer existed = mutex->create();
    if (existed == Answer::Failure) {
        setLastErrorFromErrno();
        return nullptr;
    }
    setLastError(existed == Answer::Yes ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return HandleTable::ofProcess().add(std::move(mutex));
}

HANDLE OpenMutexW(DWORD /*access*/, BOOL inherited, LPCWSTR name)
{
    if (inherited || !name) {
        setLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto mutex = std::make_shared<NamedMutex>(MutexDirectory::ofUser(), name);
    switch (mutex->open()) {
    case Answer::Yes:
        return HandleTable::ofProcess().add(std::move(mutex));
    case Answer::No:
        setLastError(ERROR_FILE_NOT_FOUND);
        return nullptr;
    case Answer::Failure:
        break;
    }
    setLastErrorFromErrno();
    return nullptr;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    const std::shared_ptr<NamedMutex> mutex = HandleTable::ofProcess().find(handle);
    if (!mutex) {
        return failed(ERROR_INVALID_HANDLE);
    }
    if (!isKnown(milliseconds)) {
        return failed(ERROR_INVALID_PARAMETER);
    }
    return told(milliseconds == 0 ? mutex->tryToTake() : mutex->take());
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds)
{
    if (count == 0 || count > MAXIMUM_WAIT_OBJECTS || !handles || !all || !isKnown(milliseconds)) {
        return failed(ERROR_INVALID_PARAMETER);
    }
    const NamedMutex::List mutexes = find(count, handles);
    if (std::find(mutexes.begin(), mutexes.end(), nullptr) != mutexes.end()) {
        return failed(ERROR_INVALID_HANDLE);
    }
    if (!NamedMutex::areDifferent(mutexes)) {
        return failed(ERROR_INVALID_PARAMETER);
    }
    return told(milliseconds == 0 ? NamedMutex::tryToTakeAll(mutexes) : NamedMutex::takeAll(mutexes));
}

BOOL ReleaseMutex(HANDLE handle)
{
    const std::shared_ptr<NamedMutex> mutex = HandleTable::ofProcess().find(handle);
    if (!mutex) {
        setLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (!mutex->release()) {
        setLastError(ERROR_NOT_OWNER);
        return FALSE;
    }
    return TRUE;
}

BOOL CloseHandle(HANDLE handle)
{
    if (!HandleTable::ofProcess().remove(handle)) {
        setLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}
