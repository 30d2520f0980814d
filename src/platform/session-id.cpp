#include "platform/session-id_p.h"

#ifdef _WIN32
#include <QLibrary>
#else
#include <QFile>

#include <unistd.h>
#endif

namespace vantkit::internal {

#ifndef _WIN32

namespace {

DWORD numberIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toUInt() : 0;
}

// Where the kernel numbers login sessions, it says so of processes that belong to one, and whose it is. In
// any other process the user stands for the session: the folder of temporary files is shared by all users.
BOOL processIdToSessionId(DWORD process, DWORD* session)
{
    const QString about = QStringLiteral("/proc/%1/").arg(process);
    const bool isOfUser = numberIn(about + QStringLiteral("loginuid")) == geteuid();
    *session = isOfUser ? numberIn(about + QStringLiteral("sessionid")) : geteuid();
    return TRUE;
}

} // namespace

#endif

ProcessIdToSessionIdFunction resolveProcessIdToSessionId()
{
#ifdef _WIN32
    return reinterpret_cast<ProcessIdToSessionIdFunction>(
        QLibrary(QStringLiteral("kernel32")).resolve("ProcessIdToSessionId"));
#else
    return processIdToSessionId;
#endif
}

} // namespace vantkit::internal
