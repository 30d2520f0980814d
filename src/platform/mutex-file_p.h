#pragma once

#include "platform/mutex-directory_p.h"

#include <mutex>
#include <string>
#include <sys/types.h>

namespace vantkit::internal {

/**
 * One handle's view of the small file that stands for a mutex. Who owns the mutex, and whether anybody
 * has it open, is told by the kernel's locks on single bytes of the file, which go with the process
 * that holds them. They belong to this object and not to its process: two objects on one file exclude
 * each other wherever they are.
 *
 * What fails leaves its reason in errno.
 */
class MutexFile
{
public:
    enum class Answer { Yes, No, Failure };

    MutexFile(MutexDirectory directory, const std::u16string& name);
    /** Removes the file if nobody else has the mutex open. */
    ~MutexFile();

    MutexFile(const MutexFile&) = delete;
    MutexFile& operator=(const MutexFile&) = delete;

    /** Opens the mutex, which comes into existence if nobody has it open. Whether it had existed before. */
    Answer create();
    /** Opens a mutex that somebody has open. Without one the answer is No, and no file is left behind. */
    Answer open();

    bool isSameAs(const MutexFile& other) const;
    /** An order on which all processes agree. */
    bool isBefore(const MutexFile& other) const;

    /** Takes the mutex if nobody owns it and nobody is trying it. */
    Answer take();

    // The same in steps, for one who may have to drop it again. It is done behind the gate, where nobody else
    // is, so that others who look through the gate never see a mutex as owned that is only being tried.
    bool enterGate();
    void leaveGate();
    Answer tryOwnership();
    bool confirmOwnership();
    void dropOwnership();

    /** Blocks until the mutex is not owned for a moment. */
    bool waitUntilFree();

    /**
     * Notes in the file that there is an owner. Yes if it said so already: then that
     * one ended without a release.
     */
    Answer noteOwner();
    bool removeNote();

private:
    Answer enter(bool mayCreate);
    Answer openFile(const FileDescriptor& folder, bool mayCreate);
    Answer join(const FileDescriptor& folder, bool mayCreate);
    bool openWatcher();
    bool hasName(const FileDescriptor& folder) const;
    void leave();

    MutexDirectory m_directory;
    std::string m_fileName;
    FileDescriptor m_file;
    FileDescriptor m_watcher; ///< the same file, opened once more by the first who waits
    std::mutex m_watcherGuard;
    dev_t m_device = 0;
    ino_t m_inode = 0;
};

} // namespace vantkit::internal
