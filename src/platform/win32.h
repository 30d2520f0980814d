#pragma once

// The calls of Windows that the kit makes. On Windows they are the real ones; elsewhere this declares just
// these, and the folder holds what stands in for them. What the kit never does is not stood in for: a mutex
// is not taken twice through one handle, the end of a thread frees nothing, handles are null or real.

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
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

// Named mutexes. Each user has his own. A mutex exists as long as anybody has it open, and is owned through
// the handle that was waited with: every other one, of this process too, has to wait.

constexpr DWORD SYNCHRONIZE = 0x100000;
constexpr DWORD MUTEX_MODIFY_STATE = 1;
constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD MAXIMUM_WAIT_OBJECTS = 64;

constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_ABANDONED = 0x80;
constexpr DWORD WAIT_TIMEOUT = 0x102;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_GEN_FAILURE = 31;

/** A handle on the mutex of that name, which is created if it does not exist; null on failure. */
HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES attributes, BOOL initiallyOwned, LPCWSTR name);

/**
 * A handle on an existing mutex; null if there is none (ERROR_FILE_NOT_FOUND) or on failure. No program that
 * this one starts inherits it.
 */
HANDLE OpenMutexW(DWORD access, BOOL inherited, LPCWSTR name);

/**
 * WAIT_OBJECT_0 if the mutex is owned now; WAIT_ABANDONED if its former owner ended or closed the handle
 * without releasing it; WAIT_TIMEOUT if it is not owned; WAIT_FAILED. @p milliseconds must be 0 or INFINITE.
 */
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

/** The same for several different mutexes, all or none of which are taken in the end. @p all must be TRUE. */
DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds);

/** FALSE if the mutex is not owned through this handle. */
BOOL ReleaseMutex(HANDLE handle);
/** Drops a handle, and the ownership that goes with it. */
BOOL CloseHandle(HANDLE handle);

/** The last failure of this thread: ERROR_FILE_NOT_FOUND, or ERROR_GEN_FAILURE with its reason in errno. */
DWORD GetLastError();

DWORD GetCurrentProcessId();
void Sleep(DWORD milliseconds);

// The system menu of a window, which has its close function.

constexpr UINT SC_CLOSE = 0xF060;
constexpr UINT MF_ENABLED = 0;
constexpr UINT MF_GRAYED = 1;
constexpr UINT MF_DISABLED = 2;

/** The system menu of a window of this process, null for anything else. @p revert must be FALSE. */
HMENU GetSystemMenu(HWND window, BOOL revert);

/** Makes @p item, SC_CLOSE, available or not. The former state, or -1 if there is no such item. */
BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags);

#endif
