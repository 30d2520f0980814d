#pragma once

// The calls of Windows that the kit makes. On Windows they are the real ones; elsewhere this declares just
// these, with the same names, types and results, and the folder holds what stands in for them.

#ifdef _WIN32

#include <windows.h>

#else

#include <cstdint>

using BOOL = int;
using UINT = std::uint32_t;
using HWND = void*;
using HMENU = void*;

#define FALSE 0
#define TRUE 1

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
