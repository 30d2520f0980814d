#include "platform/mutex-file_p.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <tuple>

namespace vantkit::internal {

namespace {

using Answer = MutexFile::Answer;

/**
 * Bytes of the file that are locked together. What stands in them does not matter, nor how long the file is.
 */
struct Bytes
{
    off_t first;
    off_t count;
};

constexpr Bytes ownership { 0, 1 }; ///< locked by the owner
constexpr Bytes door { 1, 1 }; ///< locked by the owner; those who wait for him share it for a moment
constexpr Bytes ownershipAndDoor { 0, 2 };
constexpr Bytes gate { 2, 1 }; ///< locked by the one who is behind the gate
constexpr Bytes entrance { 3, 1 }; ///< locked by the one who opens or closes the mutex
constexpr Bytes presence { 4, 1 }; ///< shared by all who have the mutex open
constexpr Bytes allBytes { 0, 0 };

// Of one length, so that a note always finds the room that the first one took.
constexpr std::string_view freeNote = "free \n";
constexpr std::string_view ownedNote = "owned\n";

__extension__ using Hash = unsigned __int128;

// FNV-1a: names of any characters and of any length become file names.
std::string fileNameOf(const std::u16string& name)
{
    constexpr Hash prime = (Hash { 1 } << 88) + 0x13B;
    Hash hash = (Hash { 0x6C62272E07BB0142 } << 64) + 0x62B821756295C58D;
    for (const char16_t unit : name) {
        hash = (hash ^ (unit & 0xFFU)) * prime;
        hash = (hash ^ (unit >> 8U)) * prime;
    }
    std::array<char, 33> digits {};
    std::snprintf(digits.data(), digits.size(), "%016llx%016llx",
        static_cast<unsigned long long>(hash >> 64U), static_cast<unsigned long long>(hash));
    return std::string("vantkit-") + digits.data() + ".mutex";
}

Answer setLock(const FileDescriptor& file, int command, short type, Bytes bytes)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = bytes.first;
    lock.l_len = bytes.count;
    while (fcntl(file.number(), command, &lock) != 0) {
        if (errno == EAGAIN) {
            return Answer::No;
        }
        if (errno != EINTR) {
            return Answer::Failure;
        }
    }
    return Answer::Yes;
}

Answer tryLock(const FileDescriptor& file, Bytes bytes)
{
    return setLock(file, F_OFD_SETLK, F_WRLCK, bytes);
}

bool lock(const FileDescriptor& file, Bytes bytes)
{
    return setLock(file, F_OFD_SETLKW, F_WRLCK, bytes) == Answer::Yes;
}

bool lockShared(const FileDescriptor& file, Bytes bytes)
{
    return setLock(file, F_OFD_SETLKW, F_RDLCK, bytes) == Answer::Yes;
}

void unlock(const FileDescriptor& file, Bytes bytes)
{
    setLock(file, F_OFD_SETLK, F_UNLCK, bytes);
}

bool writeNote(const FileDescriptor& file, std::string_view note)
{
    const ssize_t written = pwrite(file.number(), note.data(), note.size(), 0);
    if (written >= 0 && static_cast<size_t>(written) < note.size()) {
        errno = ENOSPC;
        return false;
    }
    return written >= 0;
}

bool isOwnFile(const struct stat& status)
{
    return S_ISREG(status.st_mode) && status.st_uid == geteuid();
}

} // namespace

MutexFile::MutexFile(MutexDirectory directory, const std::u16string& name)
    : m_directory(std::move(directory))
    , m_fileName(fileNameOf(name))
{ }

MutexFile::~MutexFile()
{
    if (m_file.isOpen()) {
        leave();
    }
}

Answer MutexFile::create()
{
    return enter(true);
}

Answer MutexFile::open()
{
    // A mutex that does not exist is the usual case, and quickly told: where it would be found, no file is.
    const MutexDirectory::State directory = m_directory.state();
    const std::string path = m_directory.path() + '/' + m_fileName;
    struct stat status = {};
    if (directory == MutexDirectory::State::Missing
        || (directory == MutexDirectory::State::Usable && lstat(path.c_str(), &status) != 0
            && errno == ENOENT)) {
        return Answer::No;
    }
    return enter(false);
}

Answer MutexFile::enter(bool mayCreate)
{
    const FileDescriptor folder = mayCreate ? m_directory.create() : m_directory.open();
    if (!folder.isOpen()) {
        return Answer::Failure;
    }
    // The last one who closed the mutex may have removed the file between its opening and our turn at its
    // entrance.
    do {
        const Answer opened = openFile(folder, mayCreate);
        if (opened != Answer::Yes) {
            return opened;
        }
        if (!lock(m_file, entrance)) {
            m_file = FileDescriptor();
            return Answer::Failure;
        }
    } while (!hasName(folder));

    const Answer existed = join(folder, mayCreate);
    if (existed == Answer::Failure || (existed == Answer::No && !mayCreate)) {
        m_file = FileDescriptor();
    } else {
        unlock(m_file, entrance);
    }
    return existed;
}

Answer MutexFile::openFile(const FileDescriptor& folder, bool mayCreate)
{
    const int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | (mayCreate ? O_CREAT : 0);
    m_file = FileDescriptor(openat(folder.number(), m_fileName.c_str(), flags, S_IRUSR | S_IWUSR));
    if (!m_file.isOpen()) {
        return !mayCreate && errno == ENOENT ? Answer::No : Answer::Failure;
    }
    struct stat status = {};
    if (fstat(m_file.number(), &status) != 0) {
        m_file = FileDescriptor();
        return Answer::Failure;
    }
    if (!isOwnFile(status)) {
        m_file = FileDescriptor();
        errno = EACCES;
        return Answer::Failure;
    }
    m_device = status.st_dev;
    m_inode = status.st_ino;
    return Answer::Yes;
}

/** A file that nobody has open is what one left behind who was killed: as good as none. */
Answer MutexFile::join(const FileDescriptor& folder, bool mayCreate)
{
    const Answer alone = tryLock(m_file, presence);
    if (alone == Answer::Yes) {
        // The note is written over whatever is there. A file that was emptied first would go to the disk as
        // soon as it is closed, on file systems that take care of those who replace the content of files.
        const bool started = mayCreate && writeNote(m_file, freeNote);
        if (!started) {
            const int reason = errno;
            unlinkat(folder.number(), m_fileName.c_str(), 0);
            errno = reason;
            return mayCreate ? Answer::Failure : Answer::No;
        }
    }
    if (alone == Answer::Failure || !lockShared(m_file, presence)) {
        return Answer::Failure;
    }
    return alone == Answer::Yes ? Answer::No : Answer::Yes;
}

bool MutexFile::hasName(const FileDescriptor& folder) const
{
    struct stat status = {};
    return fstatat(folder.number(), m_fileName.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0
        && status.st_dev == m_device && status.st_ino == m_inode;
}

void MutexFile::leave()
{
    if (lock(m_file, entrance) && tryLock(m_file, presence) == Answer::Yes) {
        const FileDescriptor folder = m_directory.open();
        if (folder.isOpen() && hasName(folder)) {
            unlinkat(folder.number(), m_fileName.c_str(), 0);
        }
    }
    // Closing alone would not do while a program is being started, which has the file open until it really
    // begins.
    unlock(m_file, allBytes);
}

bool MutexFile::isSameAs(const MutexFile& other) const
{
    return m_device == other.m_device && m_inode == other.m_inode;
}

bool MutexFile::isBefore(const MutexFile& other) const
{
    return std::tie(m_device, m_inode) < std::tie(other.m_device, other.m_inode);
}

Answer MutexFile::take()
{
    return tryLock(m_file, ownershipAndDoor);
}

bool MutexFile::enterGate()
{
    return lock(m_file, gate);
}

void MutexFile::leaveGate()
{
    unlock(m_file, gate);
}

Answer MutexFile::tryOwnership()
{
    return tryLock(m_file, ownership);
}

bool MutexFile::confirmOwnership()
{
    return lock(m_file, door);
}

void MutexFile::dropOwnership()
{
    unlock(m_file, ownershipAndDoor);
}

bool MutexFile::waitUntilFree()
{
    if (!openWatcher() || !lockShared(m_watcher, door)) {
        return false;
    }
    unlock(m_watcher, door);
    return true;
}

bool MutexFile::openWatcher()
{
    const std::lock_guard<std::mutex> guard(m_watcherGuard);
    if (m_watcher.isOpen()) {
        return true;
    }
    const FileDescriptor folder = m_directory.open();
    if (!folder.isOpen()) {
        return false;
    }
    if (!hasName(folder)) {
        errno = ESTALE;
        return false;
    }
    m_watcher = FileDescriptor(
        openat(folder.number(), m_fileName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return m_watcher.isOpen();
}

Answer MutexFile::noteOwner()
{
    std::array<char, ownedNote.size()> note {};
    const ssize_t length = pread(m_file.number(), note.data(), note.size(), 0);
    if (length < 0) {
        return Answer::Failure;
    }
    if (std::string_view(note.data(), static_cast<size_t>(length)) == ownedNote) {
        return Answer::Yes;
    }
    return writeNote(m_file, ownedNote) ? Answer::No : Answer::Failure;
}

bool MutexFile::removeNote()
{
    return writeNote(m_file, freeNote);
}

} // namespace vantkit::internal
