#pragma once

#include "platform/file-descriptor_p.h"

#include <string>
#include <sys/types.h>

namespace vantkit::internal {

/**
 * A handle on a named mutex. The mutex is a small file in a private folder of the user, /tmp/vantkit-<uid>,
 * whatever the environment says, since two processes that see different ones have to meet. The file stays.
 * Two bytes of it are locked, at most until the handle or its process ends: one by the owner alone, the other
 * by everybody who has the mutex open. A mutex that nobody has open does not exist.
 *
 * The file holds a note of one byte that says whether the mutex is owned. An owner that ended without a
 * release leaves it behind. A note that cannot be written costs just that knowledge.
 *
 * Whoever removes the file or the folder by hand separates an owner from those who come later. They find a
 * file without a note, and look for the owner's byte, which follows from the name, among all locks of the
 * system. Who may create a mutex finds a new file at the next lock. What fails leaves its reason in errno.
 */
class NamedMutex
{
public:
    NamedMutex(const std::u16string& name, bool mayCreate);
    ~NamedMutex();

    /** False with ENOENT if the mutex does not exist, unless it may be created. */
    bool open();

    /** Takes the mutex out of everybody's reach. False with EAGAIN if it is busy and waiting not allowed. */
    bool lock(bool mayWait);
    /** Undoes lock(), as if it had not been. */
    void unlock();

    /** Makes who locked the mutex its owner; true if the former one ended without a release. */
    bool own();
    /** False if it is not owned through this handle. */
    bool release();

private:
    bool isOwnedUnderAnotherFile() const;
    char note() const;
    void writeNote(char note) const;

    const bool m_mayCreate;
    std::string m_fileName;
    off_t m_ownershipByte;
    FileDescriptor m_file;
    char m_lastNote = 0; ///< as lock() found it
    bool m_isOwned = false;
};

} // namespace vantkit::internal
