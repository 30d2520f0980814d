#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

/** What the participants run; each target links one (see CMakeLists.txt). */
extern const char* const participantProgram;

/**
 * Participants that act on one another as they are told, in a temporary folder of their own, which is also
 * that of this process meanwhile. What is wrong with one of them at its end is fatal.
 *
 * What they are told is written as steps, with "; " between them, such as
 *
 *     P0 write; Q0 write: false; P kill; Q0 write
 *
 * A step is a letter for the process, which starts at its first step, then what it is told (see serve), and
 * the answer after a colon; without one it has to be "true", and "*" is any. After " becomes " it may be the
 * answer to one of many repetitions. Some steps are no verbs:
 *
 *     P kill         does so, without giving it time to clean up
 *     P end          lets it end in order
 *     P stop, P go   keeps it from going on, and lets it
 *     P waits        what P was told has not been answered yet, given some time for that
 *     P answers      waits for its answer
 */
class Scene
{
public:
    /** The folder is made in @p parent. */
    explicit Scene(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
    ~Scene();

    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    const std::filesystem::path& folder() const { return m_folder; }

    /** Empty if each step gave its answer, else the first that did not. */
    std::string play(const std::string& steps);

    void tell(const std::string& name, const std::string& line);
    std::string answer(const std::string& name);

private:
    struct Process;

    Process& processOf(const std::string& name);
    std::string end(const std::string& name, bool isKilled);
    std::string perform(const std::string& name, const std::string& line);

    std::filesystem::path m_formerFolder;
    std::filesystem::path m_folder;
    std::map<std::string, std::unique_ptr<Process>> m_processes;
    bool m_isFine = true;
};
