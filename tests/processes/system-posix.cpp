#include "processes/system.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

StartedProgram startProgram(const std::string& path)
{
    // A process that ended too early is told by the answer that does not come.
    std::signal(SIGPIPE, SIG_IGN);
    std::array<int, 2> input {};
    std::array<int, 2> output {};
    if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
        std::abort();
    }
    const pid_t id = fork();
    if (id == 0) {
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        dup2(output[1], STDERR_FILENO);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        execl(path.c_str(), path.c_str(), nullptr);
        _exit(EXIT_FAILURE);
    }
    close(input[0]);
    close(output[1]);
    return { id, fdopen(input[1], "w"), fdopen(output[0], "r") };
}

void killProgram(const StartedProgram& program)
{
    kill(static_cast<pid_t>(program.id), SIGKILL);
}

void stopProgram(const StartedProgram& program, bool isStopped)
{
    kill(static_cast<pid_t>(program.id), isStopped ? SIGSTOP : SIGCONT);
    if (isStopped) {
        waitpid(static_cast<pid_t>(program.id), nullptr, WUNTRACED);
    }
}

int exitCodeOf(const StartedProgram& program)
{
    int status = 0;
    waitpid(static_cast<pid_t>(program.id), &status, 0);
    return status;
}

void setVariable(const char* name, const std::string& value)
{
    setenv(name, value.c_str(), 1);
}

namespace {

bool limit(decltype(RLIMIT_NOFILE) resource, int value)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit {};
    getrlimit(resource, &limit);
    limit.rlim_cur = static_cast<rlim_t>(value);
    return setrlimit(resource, &limit) == 0;
}

/** Leaves room for so many further open files. */
bool limitOpenFiles(int room)
{
    int file = 0;
    while (fcntl(file, F_GETFD) >= 0 || room-- > 0) {
        ++file;
    }
    return limit(RLIMIT_NOFILE, file);
}

/** What comes with a new user is undone: sanitizers look into the process, and it ends with its driver. */
bool become(uid_t user)
{
    return setuid(user) == 0 && prctl(PR_SET_DUMPABLE, 1) == 0 && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0;
}

/** Of the mutexes that this process has open. */
bool removeMutexFiles()
{
    bool isDone = false;
    for (const auto& open : fs::directory_iterator("/proc/self/fd")) {
        std::error_code isGone;
        const fs::path file = fs::read_symlink(open.path(), isGone);
        isDone = (file.extension() == ".mutex" && fs::remove(file)) || isDone;
    }
    return isDone;
}

std::string addressSpaceAtItsPeak()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (word != "VmPeak:" && status >> word) { }
    status >> word;
    return word;
}

} // namespace

Verbs systemVerbs()
{
    return {
        { "limit", [](const Words& words) { return yesOrNo(limitOpenFiles(std::stoi(words.at(0)))); } },
        { "write-nothing", [](const Words&) { return yesOrNo(limit(RLIMIT_FSIZE, 0)); } },
        { "remove-files", [](const Words&) { return yesOrNo(removeMutexFiles()); } },
        { "set", [](const Words& words) { return setVariable(words.at(0).c_str(), words.at(1)), "true"; } },
        { "become",
            [](const Words& words) { return yesOrNo(become(static_cast<uid_t>(std::stoul(words.at(0))))); } },
        { "log-in",
            [](const Words&) {
                std::ofstream user("/proc/self/loginuid");
                return yesOrNo(static_cast<bool>(user << geteuid() << std::flush));
            } },
        { "is-rested", [](const Words&) { return yesOrNo(std::clock() < CLOCKS_PER_SEC / 5); } },
        { "memory", [](const Words&) { return addressSpaceAtItsPeak(); } },
    };
}
