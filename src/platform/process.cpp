#include "platform/win32.h"

#include <chrono>
#include <thread>
#include <unistd.h>

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

void Sleep(DWORD milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
