#include "platform/last-error_p.h"

#include <cerrno>

namespace vantkit::internal {

namespace {

struct Failure
{
    DWORD code;
    int reason;
};

// The first of several reasons for one code is the one that stands for it.
constexpr Failure failures[] = {
    { ERROR_SUCCESS, 0 },
    { ERROR_FILE_NOT_FOUND, ENOENT },
    { ERROR_PATH_NOT_FOUND, ENOTDIR },
    { ERROR_TOO_MANY_OPEN_FILES, EMFILE },
    { ERROR_TOO_MANY_OPEN_FILES, ENFILE },
    { ERROR_ACCESS_DENIED, EACCES },
    { ERROR_ACCESS_DENIED, EPERM },
    { ERROR_ACCESS_DENIED, EROFS },
    { ERROR_ACCESS_DENIED, ELOOP },
    { ERROR_ACCESS_DENIED, EISDIR },
    { ERROR_INVALID_HANDLE, EBADF },
    { ERROR_NOT_ENOUGH_MEMORY, ENOMEM },
    { ERROR_INVALID_PARAMETER, EINVAL },
    { ERROR_DISK_FULL, ENOSPC },
    { ERROR_DISK_FULL, EDQUOT },
    { ERROR_DISK_FULL, EFBIG },
    { ERROR_ALREADY_EXISTS, EEXIST },
    { ERROR_NOT_OWNER, EPERM },
    { ERROR_GEN_FAILURE, EIO },
};

thread_local Failure last { ERROR_SUCCESS, 0 };

} // namespace

void setLastError(DWORD code)
{
    last = { ERROR_GEN_FAILURE, EIO };
    for (const Failure& failure : failures) {
        if (failure.code == code) {
            last = failure;
            break;
        }
    }
    errno = last.reason;
}

void setLastErrorFromErrno()
{
    last = { ERROR_GEN_FAILURE, errno };
    for (const Failure& failure : failures) {
        if (failure.reason == errno) {
            last.code = failure.code;
            break;
        }
    }
}

} // namespace vantkit::internal

DWORD GetLastError()
{
    errno = vantkit::internal::last.reason;
    return vantkit::internal::last.code;
}
