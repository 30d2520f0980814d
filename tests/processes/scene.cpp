#include "processes/scene.h"

#include "processes/queue.h"
#include "processes/system.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience(30);
const std::string noAnswer = "no answer";

fs::path makeFolder(const fs::path& parent)
{
    fs::path folder;
    do {
        folder = parent / ("vantkit-scene-" + std::to_string(Clock::now().time_since_epoch().count()));
    } while (!fs::create_directory(folder));
    fs::permissions(folder, fs::perms::all); // a participant may become another user
    return folder;
}

struct Step
{
    std::string text;
    std::size_t colon = std::min(text.find(": "), text.size());
    std::size_t becomes = text.substr(0, colon).find(" becomes ");
    bool isRepeated = becomes < colon;
    std::string name = text.substr(0, 1);
    std::string line = text.substr(1, std::min(becomes, colon) - 1);
    std::string expected = isRepeated ? text.substr(becomes + 9)
        : colon < text.size()         ? text.substr(colon + 2)
                                      : "true";

    explicit Step(std::string step)
        : text(std::move(step))
    {
        line.erase(0, line.find_first_not_of(' '));
    }

    bool expects(const std::string& answer) const
    {
        return answer == expected || (expected == "*" && answer != noAnswer);
    }
};

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
    std::thread reader { [this] {
        for (char line[4096]; std::fgets(line, sizeof line, program.output);) {
            lines.push(std::string(line, std::strcspn(line, "\r\n")));
        }
        lines.close();
    } };

    /** Ends it by closing its input. The answer is "true" if it ends in order and says nothing more. */
    std::string end()
    {
        std::fclose(program.input);
        reader.join();
        std::fclose(program.output);
        std::string rest = std::to_string(exitCodeOf(program));
        while (const auto line = lines.pop()) {
            rest += "\n" + *line;
        }
        return rest == "0" ? "true" : "ended with " + rest;
    }
};

Scene::Scene(const fs::path& parent)
    : m_formerFolder(fs::temp_directory_path())
    , m_folder(makeFolder(parent))
{
    setTemporaryFolder(m_folder);
}

Scene::~Scene()
{
    while (!m_processes.empty()) {
        const std::string name = m_processes.begin()->first;
        const std::string ended = perform(name, m_isFine ? "end" : "kill");
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
        const Step step(steps.substr(begin, end - begin));
        begin = end + 2;
        const auto deadline = Clock::now() + patience;
        std::string answer = perform(step.name, step.line);
        while (!step.expects(answer) && step.isRepeated && Clock::now() < deadline) {
            answer = perform(step.name, step.line);
        }
        m_isFine = m_isFine && step.expects(answer);
        if (!m_isFine) {
            return "\"" + step.text + "\" gave \"" + answer + "\"";
        }
    }
    return {};
}

std::string Scene::perform(const std::string& name, const std::string& line)
{
    if (!m_isFine && line != "kill") {
        return "nothing after the first fault";
    }
    Process& process = processOf(name);
    if (line == "stop" || line == "go") {
        stopProgram(process.program, line == "stop");
        return "true";
    }
    if (line == "waits") {
        return process.lines.pop(std::chrono::milliseconds(50)).value_or("true");
    }
    if (line == "end" || line == "kill") {
        if (line == "kill") {
            killProgram(process.program);
        }
        const std::string ended = process.end();
        m_processes.erase(name);
        return line == "kill" ? "true" : ended;
    }
    return line == "answers" ? answer(name) : ask(name, line);
}

void Scene::tell(const std::string& name, const std::string& line)
{
    std::fputs((line + "\n").c_str(), processOf(name).program.input);
    std::fflush(processOf(name).program.input);
}

std::string Scene::answer(const std::string& name)
{
    return processOf(name).lines.pop(patience).value_or(noAnswer);
}

std::string Scene::ask(const std::string& name, const std::string& line)
{
    tell(name, line);
    return answer(name);
}

Scene::Process& Scene::processOf(const std::string& name)
{
    std::unique_ptr<Process>& process = m_processes[name];
    if (!process) {
        process = std::make_unique<Process>();
    }
    return *process;
}

std::string Scene::socketPath() const
{
    for (const auto& entry : fs::directory_iterator(m_folder)) {
        const std::string path = entry.path().string();
        if (const std::size_t end = path.rfind("-lockfile"); end != std::string::npos) {
            return path.substr(0, end);
        }
    }
    return {};
}
