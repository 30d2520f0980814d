#include "platform/named-mutex_p.h"

#include <fcntl.h>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>

namespace vantkit::internal {

namespace {

constexpr const char* temporaryFolder = "/tmp";
constexpr off_t presenceByte = 0;
constexpr char noNote = 0;
constexpr char freeNote = 'f';
constexpr char ownedNote = 'o';

struct flock lockOn(off_t byte, short type)
{
    struct flock lock = {}; // from the file's start on
    lock.l_type = type;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

bool setLock(int file, off_t byte, short type, bool mayWait = false)
{
    struct flock lock = lockOn(byte, type);
    while (fcntl(file, mayWait ? F_OFD_SETLKW : F_OFD_SETLK, &lock) != 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool isLockedByOthers(int file, off_t byte)
{
    struct flock lock = lockOn(byte, F_WRLCK);
    return fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool isRemoved(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 && status.st_nlink == 0;
}

/**
 * The same file under a high number, if there is room. Of what a killed process had open, the kernel closes
 * the highest numbers first: who sees a connection to it end must find its mutexes free.
 */
FileDescriptor raised(FileDescriptor file)
{
    FileDescriptor high(fcntl(file.number(), F_DUPFD_CLOEXEC, 512));
    return high.isOpen() ? std::move(high) : std::move(file);
}

FileDescriptor openPrivateFolder()
{
    const std::string path = std::string(temporaryFolder) + "/vantkit-" + std::to_string(geteuid());
    mkdir(path.c_str(), S_IRWXU);
    FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.isOpen()) {
        return folder;
    }
    struct stat status = {};
    if (fstat(folder.number(), &status) != 0 || status.st_uid != geteuid()) {
        errno = EACCES;
        return FileDescriptor();
    }
    fchmod(folder.number(), S_IRWXU);
    // Programs that clean up temporary files leave a folder alone that somebody holds.
    flock(folder.number(), LOCK_SH | LOCK_NB);
    return folder;
}

FileDescriptor openInPrivateFolder(const std::string& name, bool mayCreate)
{
    static std::mutex guard;
    static FileDescriptor folder;
    const std::lock_guard<std::mutex> guarded(guard);
    const int flags = O_RDWR | O_NOATIME | O_NOFOLLOW | O_CLOEXEC | (mayCreate ? O_CREAT : 0);
    const auto attempt = [&] {
        return FileDescriptor(openat(folder.number(), name.c_str(), flags, S_IRUSR | S_IWUSR));
    };
    FileDescriptor file = attempt();
    // The folder has not been opened yet, or was removed since.
    if (!file.isOpen() && (errno == EBADF || (errno == ENOENT && mayCreate))) {
        folder = openPrivateFolder();
        file = folder.isOpen() ? attempt() : FileDescriptor();
    }
    return file;
}

} // namespace

NamedMutex::NamedMutex(const std::u16string& name, bool mayCreate)
    : m_mayCreate(mayCreate)
{
    // In the manner of FNV-1a, of the name and its user.
    static const uid_t user = geteuid();
    std::uint64_t hash = (0xCBF29CE484222325 ^ user) * 0x100000001B3;
    for (const char16_t unit : name) {
        hash = (hash ^ unit) * 0x100000001B3;
    }
    m_fileName = std::to_string(hash) + ".mutex";
    m_ownershipByte = presenceByte + 1 + static_cast<off_t>(hash >> 2U);
}

NamedMutex::~NamedMutex()
{
    if (m_isOwned) {
        unlock(); // closing alone would not do: a program that is being started has the file open too
    }
}

bool NamedMutex::open()
{
    m_file = openInPrivateFolder(m_fileName, m_mayCreate);
    if (!m_file.isOpen()) {
        return false;
    }
    if (m_mayCreate) {
        m_file = raised(std::move(m_file));
    }
    if (!isLockedByOthers(m_file.number(), presenceByte)) {
        if (!m_mayCreate) {
            errno = ENOENT;
            return false;
        }
        if (note() == ownedNote) {
            writeNote(freeNote); // it tells of a mutex that is gone
        }
    }
    return setLock(m_file.number(), presenceByte, F_RDLCK);
}

bool NamedMutex::lock(bool mayWait)
{
    while (setLock(m_file.number(), m_ownershipByte, F_WRLCK, mayWait)) {
        if (!m_mayCreate || !isRemoved(m_file.number())) {
            m_lastNote = note();
            if (m_lastNote != noNote || !isOwnedUnderAnotherFile()) {
                return true;
            }
            unlock();
            errno = mayWait ? ESTALE : EAGAIN; // nobody can wait for the owner, who has another file
            return false;
        }
        if (!open()) {
            return false;
        }
    }
    return false;
}

void NamedMutex::unlock()
{
    setLock(m_file.number(), m_ownershipByte, F_UNLCK);
}

bool NamedMutex::own()
{
    writeNote(ownedNote);
    m_isOwned = true;
    return m_lastNote == ownedNote;
}

bool NamedMutex::release()
{
    if (m_isOwned) {
        writeNote(freeNote);
        unlock();
    }
    errno = EPERM; // if it was not
    return std::exchange(m_isOwned, false);
}

bool NamedMutex::isOwnedUnderAnotherFile() const
{
    std::set<std::string> files;
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        std::string number, kind, mode, access, process, file;
        off_t byte = 0;
        words >> number >> kind >> mode >> access >> process >> file >> byte;
        if (kind == "OFDLCK" && access == "WRITE" && byte == m_ownershipByte) {
            files.insert(file);
        }
    }
    return files.size() > 1; // one is this handle's own
}

char NamedMutex::note() const
{
    char note = noNote;
    return pread(m_file.number(), &note, 1, 0) == 1 ? note : noNote;
}

void NamedMutex::writeNote(char note) const
{
    static_cast<void>(pwrite(m_file.number(), &note, 1, 0) == 1);
}

} // namespace vantkit::internal
