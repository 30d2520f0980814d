#include "processes/system.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <windows.h>
// Not to be sorted: it needs the one before.
// clang-format off
#include <psapi.h>

// clang-format on

StartedProgram startProgram(const std::string& path)
{
    std::array<int, 2> input {};
    std::array<int, 2> output {};
    _pipe(input.data(), 4096, _O_TEXT | _O_NOINHERIT);
    _pipe(output.data(), 4096, _O_TEXT | _O_NOINHERIT);
    const std::array<int, 3> own { _dup(0), _dup(1), _dup(2) };
    _dup2(input[0], 0);
    _dup2(output[1], 1);
    _dup2(output[1], 2);
    const std::intptr_t id = _spawnl(_P_NOWAIT, path.c_str(), "participant", nullptr);
    for (int file = 0; file < 3; ++file) {
        _dup2(own[file], file);
        _close(own[file]);
    }
    _close(input[0]);
    _close(output[1]);
    return { id, _fdopen(input[1], "w"), _fdopen(output[0], "r") };
}

void signalProgram(const StartedProgram& program, const std::string& signal)
{
    if (signal != "kill") {
        std::abort(); // Windows has no such call
    }
    TerminateProcess(reinterpret_cast<HANDLE>(program.id), 9);
}

int exitCodeOf(const StartedProgram& program)
{
    int code = 0;
    _cwait(&code, program.id, 0);
    return code;
}

void setVariable(const char* name, const std::string& value)
{
    _putenv_s(name, value.c_str());
}

Verbs systemVerbs()
{
    return { { "memory", [](const Words&) {
                  PROCESS_MEMORY_COUNTERS counters {};
                  K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
                  return std::to_string(counters.PeakPagefileUsage / 1024);
              } } };
}
