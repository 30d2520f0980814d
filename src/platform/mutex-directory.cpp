#include "platform/mutex-directory_p.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace vantkit::internal {

namespace {

constexpr mode_t ownerOnly = S_IRWXU;
constexpr mode_t everybody = S_IRWXU | S_IRWXG | S_IRWXO;

bool isOwnDirectory(const struct stat& status)
{
    return S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

bool makePrivate(int directory)
{
    struct stat status = {};
    if (fstat(directory, &status) != 0) {
        return false;
    }
    if (!isOwnDirectory(status)) {
        errno = EACCES;
        return false;
    }
    return (status.st_mode & everybody) == ownerOnly || fchmod(directory, ownerOnly) == 0;
}

std::string pathOfUser()
{
    const std::string user = std::to_string(geteuid());
    std::string runtime = "/run/user/" + user;
    struct stat status = {};
    if (lstat(runtime.c_str(), &status) == 0 && isOwnDirectory(status)) {
        return runtime;
    }
    return "/tmp/vantkit-" + user;
}

} // namespace

MutexDirectory::MutexDirectory(std::string path)
    : m_path(std::move(path))
{ }

const MutexDirectory& MutexDirectory::ofUser()
{
    static const MutexDirectory directory(pathOfUser());
    return directory;
}

MutexDirectory::State MutexDirectory::state() const
{
    struct stat status = {};
    if (lstat(m_path.c_str(), &status) != 0) {
        return errno == ENOENT ? State::Missing : State::Unusable;
    }
    return isOwnDirectory(status) ? State::Usable : State::Unusable;
}

FileDescriptor MutexDirectory::open() const
{
    FileDescriptor directory(::open(m_path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (directory.isOpen() && !makePrivate(directory.number())) {
        return {};
    }
    return directory;
}

FileDescriptor MutexDirectory::create() const
{
    if (mkdir(m_path.c_str(), ownerOnly) != 0 && errno != EEXIST) {
        return {};
    }
    return open();
}

} // namespace vantkit::internal
