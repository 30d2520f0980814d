#include "platform/local-socket-name_p.h"

#ifndef _WIN32
#include "platform/file-descriptor_p.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#endif

namespace vantkit::internal {

#ifdef _WIN32

void freeDeadLocalSocketName(const QString& /*name*/) { }

#else

namespace {

bool isOwnSocket(const QByteArray& path)
{
    struct stat status
    { };

    return lstat(path.constData(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == geteuid();
}

bool isDead(const QByteArray& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<int>(sizeof address.sun_path)) {
        return false;
    }
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    // A server that has more clients waiting than it takes must not make us wait as well.
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    return socket.isOpen()
        && connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0
        && errno == ECONNREFUSED;
}

} // namespace

void freeDeadLocalSocketName(const QString& name)
{
    // Where QLocalServer puts it.
    const QByteArray path = QFile::encodeName(QDir::cleanPath(QDir::tempPath()) + QLatin1Char('/') + name);
    if (isOwnSocket(path) && isDead(path)) {
        unlink(path.constData());
    }
}

#endif

} // namespace vantkit::internal
