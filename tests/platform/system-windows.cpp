#include "system.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <windows.h>

const bool secondHandleContends = false;
// Wine lets them pass.
const bool doublesAreRefused = !GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
const std::size_t longestName = 200;

ChildProcess startThisProgram(const std::string& argument)
{
    std::array<int, 2> toChild {};
    std::array<int, 2> fromChild {};
    _pipe(toChild.data(), 4096, _O_TEXT | _O_NOINHERIT);
    _pipe(fromChild.data(), 4096, _O_TEXT | _O_NOINHERIT);
    const std::array<int, 2> own { _dup(0), _dup(1) };
    _dup2(toChild[0], 0);
    _dup2(fromChild[1], 1);
    const std::intptr_t id = _spawnl(_P_NOWAIT, _pgmptr, "platform-test", argument.c_str(), nullptr);
    _dup2(own[0], 0);
    _dup2(own[1], 1);
    for (const int descriptor : { own[0], own[1], toChild[0], fromChild[1] }) {
        _close(descriptor);
    }
    return { id, _fdopen(toChild[1], "w"), _fdopen(fromChild[0], "r") };
}

void endAtOnce(const ChildProcess& process)
{
    const auto handle = reinterpret_cast<HANDLE>(process.id);
    TerminateProcess(handle, 9);
    WaitForSingleObject(handle, INFINITE);
    CloseHandle(handle);
}
