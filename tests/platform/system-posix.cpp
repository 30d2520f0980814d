#include "system.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

const bool secondHandleContends = true;
const bool doublesAreRefused = true;
const std::size_t longestName = 4000;

namespace {

struct Pipe
{
    Pipe()
    {
        std::array<int, 2> ends {};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        readEnd = ends[0];
        writeEnd = ends[1];
    }

    int readEnd;
    int writeEnd;
};

pid_t spawn(std::string role, const posix_spawn_file_actions_t* actions)
{
    std::string program = "/proc/self/exe";
    const std::array<char*, 3> arguments { program.data(), role.data(), nullptr };
    pid_t id = 0;
    if (posix_spawn(&id, program.c_str(), actions, nullptr, arguments.data(), environ) != 0) {
        throw std::runtime_error("no second process");
    }
    return id;
}

pid_t spawnBetween(const std::string& role, int input, int output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    const pid_t id = spawn(role, &actions);
    posix_spawn_file_actions_destroy(&actions);
    return id;
}

} // namespace

struct ChildProcess::Process
{
    pid_t id;
    bool running = true;
};

ChildProcess::ChildProcess(const std::string& role, Streams streams)
{
    if (streams == Streams::Inherited) {
        m_process = std::make_shared<Process>(Process { spawn(role, nullptr) });
        return;
    }
    const Pipe toChild;
    const Pipe fromChild;
    m_process =
        std::make_shared<Process>(Process { spawnBetween(role, toChild.readEnd, fromChild.writeEnd) });
    close(toChild.readEnd);
    close(fromChild.writeEnd);
    m_input = fdopen(toChild.writeEnd, "w");
    m_output = fdopen(fromChild.readEnd, "r");
}

void ChildProcess::kill()
{
    if (m_process->running) {
        ::kill(m_process->id, SIGKILL);
        waitForEnd();
    }
}

void ChildProcess::waitForEnd()
{
    while (m_process->running && waitpid(m_process->id, nullptr, 0) < 0 && errno == EINTR) { }
    m_process->running = false;
}

std::chrono::milliseconds processorTimeOfThisProcess()
{
    timespec time {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

void surviveBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}
