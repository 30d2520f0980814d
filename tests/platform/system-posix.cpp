#include "system.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

const bool secondHandleContends = true;
const bool doublesAreRefused = true;
const std::size_t longestName = 4000;

ChildProcess startThisProgram(const std::string& argument)
{
    // A process that ended too early is told by the answer that does not come.
    std::signal(SIGPIPE, SIG_IGN);
    std::array<int, 2> ends { -1, -1 };
    socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data());
    const pid_t id = fork();
    if (id == 0) {
        dup2(ends[1], STDIN_FILENO);
        dup2(ends[1], STDOUT_FILENO);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        execl("/proc/self/exe", "platform-test", argument.c_str(), nullptr);
        _exit(EXIT_FAILURE);
    }
    close(ends[1]);
    return { id, fdopen(ends[0], "w"), fdopen(fcntl(ends[0], F_DUPFD_CLOEXEC, 0), "r") };
}

void endAtOnce(const ChildProcess& process)
{
    kill(static_cast<pid_t>(process.id), SIGKILL);
    waitpid(static_cast<pid_t>(process.id), nullptr, 0);
}
