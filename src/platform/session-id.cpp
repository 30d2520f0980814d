#include "platform/session-id_p.h"

#ifdef _WIN32
#include <QLibrary>
#else
#include <QFile>
#endif

namespace vantkit::internal {

#ifdef _WIN32

ProcessIdToSessionIdFunction resolveProcessIdToSessionId()
{
    return reinterpret_cast<ProcessIdToSessionIdFunction>(
        QLibrary(QStringLiteral("kernel32")).resolve("ProcessIdToSessionId"));
}

#else

namespace {

// The kernel numbers login sessions where it is built to, and says so of a process that belongs to none.
constexpr DWORD noSession = 0xFFFFFFFF;

BOOL processIdToSessionId(DWORD process, DWORD* session)
{
    QFile file(QStringLiteral("/proc/%1/sessionid").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return FALSE;
    }
    bool isNumber = false;
    const DWORD number = file.readAll().trimmed().toUInt(&isNumber);
    if (!isNumber || number == noSession) {
        return FALSE;
    }
    *session = number;
    return TRUE;
}

} // namespace

ProcessIdToSessionIdFunction resolveProcessIdToSessionId()
{
    DWORD session = 0;
    return processIdToSessionId(GetCurrentProcessId(), &session) ? processIdToSessionId : nullptr;
}

#endif

} // namespace vantkit::internal
