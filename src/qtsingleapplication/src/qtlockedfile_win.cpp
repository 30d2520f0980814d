#include "platform/win32.h"
#include "qtsingleapplication/src/qtlockedfile.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QtDebug>

namespace QtLP_Private {

namespace {

constexpr int maximumReaders = 64;
static_assert(maximumReaders == MAXIMUM_WAIT_OBJECTS, "a writer waits for all readers in one call");

void releaseAndClose(Qt::HANDLE mutex)
{
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}

} // namespace

QtLockedFile::~QtLockedFile()
{
    if (isOpen()) {
        unlock();
    }
    // If the file was closed under a lock, its handles are still there.
    for (Qt::HANDLE mutex : qAsConst(readerMutexes)) {
        CloseHandle(mutex);
    }
    for (Qt::HANDLE mutex : { readerMutex, writerMutex }) {
        if (mutex) {
            CloseHandle(mutex);
        }
    }
}

bool QtLockedFile::lock(LockMode mode, bool block)
{
    if (!isOpen()) {
        qWarning("QtLockedFile::lock(): file is not opened");
        return false;
    }
    if (mode == NoLock) {
        return unlock();
    }
    if (mode == currentLockMode) {
        return true;
    }
    if (isLocked()) {
        unlock();
    }

    if (!writerMutex) {
        writerMutex = getMutexHandle(-1, true);
    }
    // The one gate of all lockers: a reader holds it while it looks for a place, a writer as long as it has
    // the lock.
    if (!writerMutex || !waitMutex(writerMutex, block)) {
        return false;
    }
    if (!(mode == ReadLock ? lockToRead() : lockToWrite(block))) {
        return false;
    }
    currentLockMode = mode;
    return true;
}

bool QtLockedFile::lockToRead()
{
    const auto letTheNextPass = qScopeGuard([this] { ReleaseMutex(writerMutex); });
    for (int idx = 0; idx < maximumReaders; ++idx) {
        readerMutex = getMutexHandle(idx, false);
        const bool isNew = !readerMutex;
        if (isNew) {
            readerMutex = getMutexHandle(idx, true);
        }
        if (readerMutex && waitMutex(readerMutex, false)) {
            return true;
        }
        if (readerMutex) {
            CloseHandle(readerMutex);
            readerMutex = nullptr;
        }
        if (isNew) {
            return false;
        }
    }
    qWarning("QtLockedFile::lock(): too many readers");
    return false;
}

bool QtLockedFile::lockToWrite(bool block)
{
    // Readers leave gaps, so that every place has to be looked at.
    for (int idx = 0; idx < maximumReaders; ++idx) {
        if (Qt::HANDLE mutex = getMutexHandle(idx, false)) {
            readerMutexes.append(mutex);
        }
    }
    if (readerMutexes.isEmpty()) {
        return true;
    }
    const DWORD result = WaitForMultipleObjects(
        static_cast<DWORD>(readerMutexes.size()), readerMutexes.constData(), TRUE, block ? INFINITE : 0);
    if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) {
        return true;
    }
    if (result != WAIT_TIMEOUT) {
        qErrnoWarning("QtLockedFile::lock(): WaitForMultipleObjects failed");
    }
    currentLockMode = WriteLock;
    unlock();
    return false;
}

bool QtLockedFile::unlock()
{
    if (!isOpen()) {
        qWarning("QtLockedFile::unlock(): file is not opened");
        return false;
    }
    if (currentLockMode == ReadLock) {
        releaseAndClose(readerMutex);
        readerMutex = nullptr;
    } else if (currentLockMode == WriteLock) {
        for (Qt::HANDLE mutex : qAsConst(readerMutexes)) {
            releaseAndClose(mutex);
        }
        readerMutexes.clear();
        ReleaseMutex(writerMutex);
    }
    currentLockMode = NoLock;
    return true;
}

/** The writer mutex, or that of reader @p idx if it is not negative. */
Qt::HANDLE QtLockedFile::getMutexHandle(int idx, bool doCreate)
{
    if (mutexName.isEmpty()) {
        mutexName = QStringLiteral("QtLockedFile mutex ") + QFileInfo(*this).absoluteFilePath().toLower();
    }
    const QString name = idx < 0 ? mutexName : mutexName + QString::number(idx);
    const auto* const utf16 = reinterpret_cast<LPCWSTR>(name.utf16());

    if (doCreate) {
        Qt::HANDLE mutex = CreateMutexW(nullptr, FALSE, utf16);
        if (!mutex) {
            qErrnoWarning("QtLockedFile::lock(): CreateMutex failed");
        }
        return mutex;
    }
    Qt::HANDLE mutex = OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, utf16);
    if (!mutex && GetLastError() != ERROR_FILE_NOT_FOUND) {
        qErrnoWarning("QtLockedFile::lock(): OpenMutex failed");
    }
    return mutex;
}

bool QtLockedFile::waitMutex(Qt::HANDLE mutex, bool doBlock)
{
    switch (WaitForSingleObject(mutex, doBlock ? INFINITE : 0)) {
    case WAIT_OBJECT_0:
    case WAIT_ABANDONED: // by a process that died
        return true;
    case WAIT_TIMEOUT:
        return false;
    default:
        qErrnoWarning("QtLockedFile::lock(): WaitForSingleObject failed");
        return false;
    }
}

} // namespace QtLP_Private
