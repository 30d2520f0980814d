#pragma once

#include "platform/mutex-file_p.h"
#include "platform/win32.h"

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace vantkit::internal {

/**
 * A handle on a named mutex. It knows what the file cannot tell: which thread took the mutex through this
 * handle, and how often.
 *
 * Results of waiting are those of WaitForSingleObject and WaitForMultipleObjects; what fails leaves its
 * reason in errno.
 */
class NamedMutex : public std::enable_shared_from_this<NamedMutex>
{
public:
    using List = std::vector<std::shared_ptr<NamedMutex>>;

    NamedMutex(const MutexDirectory& directory, const std::u16string& name);

    /** As MutexFile::create() and MutexFile::open(): one of them, once, before anything else. */
    MutexFile::Answer create() { return m_file.create(); }

    MutexFile::Answer open() { return m_file.open(); }

    DWORD tryToTake();
    DWORD take();
    /** All in one moment, or none; they must be different. */
    static DWORD tryToTakeAll(List mutexes);
    static DWORD takeAll(List mutexes);
    /** Whether no mutex is among them twice, by whatever handles. */
    static bool areDifferent(List mutexes);

    /** False if the calling thread did not take the mutex through this handle. */
    bool release();
    /**
     * If @p thread owns the mutex through this handle, the next owner is told that
     * it ended without a release.
     */
    void abandon(std::thread::id thread);

private:
    class Behind;

    static void sort(List& mutexes);
    static DWORD attempt(const List& sorted, NamedMutex*& busy);
    static DWORD completeAll(const List& owned);

    bool isTaken() const { return m_timesTaken > 0; }

    MutexFile::Answer tryOwnership();
    DWORD complete();
    void giveBack();
    void drop();

    MutexFile m_file;
    std::mutex m_guard; ///< of what follows, and of the file's ownership
    std::thread::id m_owner;
    unsigned m_timesTaken = 0;
};

} // namespace vantkit::internal
