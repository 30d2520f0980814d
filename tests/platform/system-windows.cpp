#include "system.h"

#include <array>
#include <fcntl.h>
#include <io.h>
#include <stdexcept>
#include <windows.h>

const bool secondHandleContends = false;
// Wine lets them pass.
const bool doublesAreRefused = !GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
const std::size_t longestName = 200;

namespace {

struct Pipe
{
    Pipe()
    {
        SECURITY_ATTRIBUTES inheritable { sizeof inheritable, nullptr, TRUE };
        if (!CreatePipe(&readEnd, &writeEnd, &inheritable, 0)) {
            throw std::runtime_error("no pipe");
        }
    }

    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
};

/** Whatever this process has that can be inherited, the other inherits. */
HANDLE spawn(const std::string& role, HANDLE input, HANDLE output)
{
    std::array<wchar_t, 32768> program {};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::wstring commandLine =
        L'"' + std::wstring(program.data()) + L"\" " + std::wstring(role.begin(), role.end());
    STARTUPINFOW start {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input;
    start.hStdOutput = output;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started {};
    if (!CreateProcessW(program.data(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
            &start, &started)) {
        throw std::runtime_error("no second process");
    }
    CloseHandle(started.hThread);
    return started.hProcess;
}

/** This end of a pipe, which stays here. */
std::FILE* keep(HANDLE end, int access, const char* mode)
{
    SetHandleInformation(end, HANDLE_FLAG_INHERIT, 0);
    return _fdopen(_open_osfhandle(reinterpret_cast<intptr_t>(end), access | _O_TEXT), mode);
}

} // namespace

struct ChildProcess::Process
{
    ~Process() { CloseHandle(handle); }

    HANDLE handle;
};

ChildProcess::ChildProcess(const std::string& role, Streams streams)
    : m_process(new Process)
{
    if (streams == Streams::Inherited) {
        m_process->handle = spawn(role, GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE));
        return;
    }
    const Pipe toChild;
    const Pipe fromChild;
    m_input = keep(toChild.writeEnd, 0, "w");
    m_output = keep(fromChild.readEnd, _O_RDONLY, "r");
    m_process->handle = spawn(role, toChild.readEnd, fromChild.writeEnd);
    CloseHandle(toChild.readEnd);
    CloseHandle(fromChild.writeEnd);
}

void ChildProcess::kill()
{
    TerminateProcess(m_process->handle, 9);
    waitForEnd();
}

void ChildProcess::waitForEnd()
{
    WaitForSingleObject(m_process->handle, INFINITE);
}

std::chrono::milliseconds processorTimeOfThisProcess()
{
    FILETIME created {};
    FILETIME ended {};
    FILETIME inKernel {};
    FILETIME inProgram {};
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &inKernel, &inProgram);
    // In units of 100 ns, which stay below 7 minutes for the tests.
    return std::chrono::milliseconds((inKernel.dwLowDateTime + inProgram.dwLowDateTime) / 10000);
}

void surviveBrokenPipes() { }
