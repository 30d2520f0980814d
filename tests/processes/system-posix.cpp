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

void signalProgram(const StartedProgram& program, const std::string& signal)
{
    const auto id = static_cast<pid_t>(program.id);
    kill(id, signal == "kill" ? SIGKILL : signal == "stop" ? SIGSTOP : SIGCONT);
    if (signal == "stop") {
        waitpid(id, nullptr, WUNTRACED);
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

auto limit(decltype(RLIMIT_NOFILE) resource)
{
    return [=](const Words& words) {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit {};
        getrlimit(resource, &limit);
        limit.rlim_cur = std::stoul(words.at(0));
        return yesOrNo(setrlimit(resource, &limit) == 0);
    };
}

/** What comes with a new user is undone: sanitizers look into the process, and it ends with its driver. */
std::string become(const Words& words)
{
    return yesOrNo(setuid(static_cast<uid_t>(std::stoul(words.at(0)))) == 0 && prctl(PR_SET_DUMPABLE, 1) == 0
        && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0);
}

/** Of the mutexes that this process has open. */
std::string removeMutexFiles(const Words& /*words*/)
{
    bool isDone = false;
    for (const auto& open : fs::directory_iterator("/proc/self/fd")) {
        std::error_code isGone;
        const fs::path file = fs::read_symlink(open.path(), isGone);
        isDone = (file.extension() == ".mutex" && fs::remove(file)) || isDone;
    }
    return yesOrNo(isDone);
}

std::string logIn(const Words& /*words*/)
{
    return yesOrNo(static_cast<bool>(std::ofstream("/proc/self/loginuid") << geteuid() << std::flush));
}

/** The address space at its peak, in KB. */
std::string memory(const Words& /*words*/)
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
        { "limit-files", limit(RLIMIT_NOFILE) },
        { "limit-writing", limit(RLIMIT_FSIZE) },
        { "remove-files", removeMutexFiles },
        { "become", become },
        { "log-in", logIn },
        { "is-rested", [](const Words&) { return yesOrNo(std::clock() < CLOCKS_PER_SEC / 5); } },
        { "memory", memory },
    };
}
