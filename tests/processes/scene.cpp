#include "processes/scene.h"

#include "processes/queue.h"
#include "processes/system.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <thread>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience(30);
constexpr int stillRunning = -1;

void setTemporaryFolder(const fs::path& folder)
{
    for (const char* variable : { "TMPDIR", "TMP" }) {
        setVariable(variable, folder.string());
    }
}

} // namespace

struct Scene::Process
{
    StartedProgram program = startProgram(participantProgram);
    Queue lines;
    std::atomic<int> exitCode = stillRunning;
    std::thread reader { [this] {
        for (char line[4096]; std::fgets(line, sizeof line, program.output);) {
            lines.push(std::string(line, std::strcspn(line, "\r\n")));
        }
        exitCode = exitCodeOf(program);
        lines.push(std::nullopt);
    } };
};

Scene::Scene(const fs::path& parent)
    : m_formerFolder(fs::temp_directory_path())
{
    do {
        m_folder = parent / ("vantkit-scene-" + std::to_string(Clock::now().time_since_epoch().count()));
    } while (!fs::create_directory(m_folder));
    fs::permissions(m_folder, fs::perms::all); // a participant may become another user
    setTemporaryFolder(m_folder);
}

Scene::~Scene()
{
    while (!m_processes.empty()) {
        const std::string name = m_processes.begin()->first;
        const std::string ended = end(name, !m_isFine);
        if (ended != "true") {
            std::cerr << name << " " << ended << std::endl;
            std::abort();
        }
    }
    setTemporaryFolder(m_formerFolder);
    fs::remove_all(m_folder);
}

std::string Scene::play(const std::string& steps)
{
    for (std::size_t begin = 0; begin < steps.size();) {
        const std::size_t end = std::min(steps.find("; ", begin), steps.size());
        const std::string step = steps.substr(begin, end - begin);
        begin = end + 2;
        const std::size_t colon = std::min(step.find(": "), step.size());
        const std::size_t becomes = step.find(" becomes ");
        const bool isRepeated = becomes < colon;
        std::string line = step.substr(1, (isRepeated ? becomes : colon) - 1);
        line.erase(0, line.find_first_not_of(' '));
        const std::string expected = isRepeated ? step.substr(becomes + 9)
            : colon < step.size()               ? step.substr(colon + 2)
                                                : "true";
        const auto deadline = Clock::now() + patience;
        std::string answer;
        do {
            answer = perform(step.substr(0, 1), line);
            m_isFine = answer == expected || expected == "*";
        } while (!m_isFine && isRepeated && Clock::now() < deadline);
        if (!m_isFine) {
            return "\"" + step + "\" gave \"" + answer + "\"";
        }
    }
    return {};
}

std::string Scene::perform(const std::string& name, const std::string& line)
{
    Process& process = processOf(name);
    if (line == "stop" || line == "go") {
        return signalProgram(process.program, line), "true";
    }
    if (line == "waits") {
        return process.lines.pop(std::chrono::milliseconds(50)).value_or("true");
    }
    if (line == "end" || line == "kill") {
        return end(name, line == "kill");
    }
    if (line != "answers") {
        tell(name, line);
    }
    return answer(name);
}

/** "true" if it is killed, or ends in order and says nothing more. */
std::string Scene::end(const std::string& name, bool isKilled)
{
    Process& process = processOf(name);
    if (isKilled && process.exitCode == stillRunning) {
        signalProgram(process.program, "kill");
    }
    std::fclose(process.program.input);
    process.reader.join();
    std::fclose(process.program.output);
    std::string rest = std::to_string(process.exitCode);
    while (const auto line = process.lines.pop()) {
        rest += "\n" + *line;
    }
    m_processes.erase(name);
    return isKilled || rest == "0" ? "true" : "ended with " + rest;
}

void Scene::tell(const std::string& name, const std::string& line)
{
    std::fputs((line + "\n").c_str(), processOf(name).program.input);
    std::fflush(processOf(name).program.input);
}

std::string Scene::answer(const std::string& name)
{
    Process& process = processOf(name);
    const auto answer = process.lines.pop(patience);
    m_isFine = m_isFine && answer;
    return answer.value_or(process.exitCode == stillRunning
            ? "no answer in time"
            : "ended with " + std::to_string(process.exitCode));
}

Scene::Process& Scene::processOf(const std::string& name)
{
    std::unique_ptr<Process>& process = m_processes[name];
    if (!process) {
        process = std::make_unique<Process>();
    }
    return *process;
}
