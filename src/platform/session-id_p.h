#pragma once

#include "platform/win32.h"

namespace vantkit::internal {

/** Writes the id of the login session of a process. */
using ProcessIdToSessionIdFunction = BOOL(WINAPI*)(DWORD process, DWORD* session);

/** The system's function of that name; null where it has none. */
ProcessIdToSessionIdFunction resolveProcessIdToSessionId();

} // namespace vantkit::internal
