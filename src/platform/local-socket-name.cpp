#include "platform/local-socket-name_p.h"

#ifndef _WIN32
#include "platform/file-descriptor_p.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <poll.h>
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
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == geteuid();
}

enum class Server { None, Living, Ending };

/**
 * Long enough for a process that is ending to close what it has open. A server that
 * lives is given that time too.
 */
constexpr int endingTime = 200;

Server serverAt(const QByteArray& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<int>(sizeof address.sun_path)) {
        return Server::Living;
    }
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    // A server that has more clients waiting than it takes must not make us wait as well.
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.isOpen()) {
        return Server::Living;
    }
    if (connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return errno == ECONNREFUSED ? Server::None : Server::Living;
    }
    // A process that was killed may have let go of its lock already, and not yet of its server.
    pollfd hangUp { socket.number(), POLLIN, 0 };
    return poll(&hangUp, 1, endingTime) > 0 ? Server::Ending : Server::Living;
}

bool isDead(const QByteArray& path)
{
    Server server = serverAt(path);
    if (server == Server::Ending) {
        server = serverAt(path);
    }
    return server == Server::None;
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
