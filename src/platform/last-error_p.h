#pragma once

#include "platform/win32.h"

namespace vantkit::internal {

/** What GetLastError gives to this thread from now on, with the system's reason that fits it best. */
void setLastError(DWORD code);

/** The same for a call of the system that has just failed and left its reason in errno. */
void setLastErrorFromErrno();

} // namespace vantkit::internal
