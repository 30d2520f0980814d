#pragma once

// The calls of Windows that the kit makes. On Windows they are the real ones; elsewhere this declares just
// these, with the same names, types and results, and the folder holds what stands in for them.

#ifdef _WIN32

#include <windows.h>

#else

#include <cstdint>

using BOOL = int;
using UINT = std::uint32_t;
using DWORD = std::uint32_t;
using HANDLE = void*;
using HWND = void*;
using HMENU = void*;
using LPCWSTR = const char16_t*; ///< UTF-16, with a NUL at its end
using LPSECURITY_ATTRIBUTES = void*;

#define FALSE 0
#define TRUE 1
#define WINAPI

// Named mutexes. A mutex is owned by the thread that waited for it, through the handle that it waited with:
// the same handle lets its owner in again, while every other handle, of this process or another, has to wait.
// It is abandoned if its owner ends, or closes that handle, without releasing it. Names of two users never
// meet.

constexpr DWORD SYNCHRONIZE = 0x100000;
constexpr DWORD MUTEX_MODIFY_STATE = 1;

constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD MAXIMUM_WAIT_OBJECTS = 64;

constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_ABANDONED = 0x80;
constexpr DWORD WAIT_TIMEOUT = 0x102;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_GEN_FAILURE = 31;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_NOT_OWNER = 288;

/**
 * A handle on the mutex of that name, which is created if it does not exist; null on failure. GetLastError
 * then says why, and after a success whether the mutex was there (ERROR_ALREADY_EXISTS). @p attributes must
 * be null, @p initiallyOwned FALSE, and a name there must be.
 */
HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES attributes, BOOL initiallyOwned, LPCWSTR name);

/**
 * A handle on an existing mutex; null if there is none (ERROR_FILE_NOT_FOUND) or on failure. Every handle has
 * all @p access, and none is ever inherited by a program that this one starts: @p inherited must be FALSE.
 */
HANDLE OpenMutexW(DWORD access, BOOL inherited, LPCWSTR name);

/**
 * Waits for one mutex: WAIT_OBJECT_0 or WAIT_ABANDONED if it is owned now, WAIT_TIMEOUT if not, WAIT_FAILED
 * on failure. @p milliseconds must be 0 or INFINITE.
 */
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

/**
 * Waits for up to MAXIMUM_WAIT_OBJECTS different mutexes, until all are free at the same time: none is taken
 * before. @p all must be TRUE; else as WaitForSingleObject.
 */
DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds);

/**
 * Gives up what one successful wait took; FALSE if the calling thread does not own the
 * mutex through this handle.
 */
BOOL ReleaseMutex(HANDLE handle);

/** Drops a handle. The mutex goes with the last one in any process. */
BOOL CloseHandle(HANDLE handle);

/** Why the calling thread's last call failed. Sets errno to the system's own reason for the same failure. */
DWORD GetLastError();

DWORD GetCurrentProcessId();

/** Suspends the calling thread. */
void Sleep(DWORD milliseconds);

// The system menu of a window, which has its close function.

constexpr UINT SC_CLOSE = 0xF060;
constexpr UINT MF_ENABLED = 0;
constexpr UINT MF_GRAYED = 1;
constexpr UINT MF_DISABLED = 2;

/** The system menu of a window of this process, null for anything else. @p revert must be FALSE. */
HMENU GetSystemMenu(HWND window, BOOL revert);

/**
 * Makes the close function of a window available or not: @p item must be SC_CLOSE. The result is the former
 * state, or -1 if there is no such item.
 */
BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags);

#endif
