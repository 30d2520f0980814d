#include "platform/local-socket-name_p.h"

#include <QLocalServer>

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

#ifndef _WIN32

namespace {

bool isOwnSocket(const QByteArray& path)
{
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == geteuid();
}

/** Long enough for a process that was killed and has lost its lock to lose its server as well. */
constexpr int endingTime = 200;

bool isDead(const QByteArray& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<int>(sizeof address.sun_path)) {
        return false;
    }
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    for (int attempt = 0; attempt < 2; ++attempt) {
        // A server that has more clients waiting than it takes must not make us wait as well.
        const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        if (connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            return errno == ECONNREFUSED;
        }
        pollfd hangUp { socket.number(), POLLIN, 0 };
        poll(&hangUp, 1, endingTime);
    }
    return false;
}

} // namespace

#endif

bool listenForUser(QLocalServer& server, const QString& name)
{
#ifdef _WIN32
    server.setSocketOptions(QLocalServer::UserAccessOption);
    return server.listen(name);
#else
    // Where QLocalServer puts it.
    const QByteArray path = QFile::encodeName(QDir::cleanPath(QDir::tempPath()) + QLatin1Char('/') + name);
    if (isOwnSocket(path) && isDead(path)) {
        unlink(path.constData());
    }
    // With socket options of its own, the server would take the name away from one that lives.
    const mode_t former = umask(S_IRWXG | S_IRWXO);
    const bool listens = server.listen(name);
    umask(former);
    return listens;
#endif
}

} // namespace vantkit::internal
