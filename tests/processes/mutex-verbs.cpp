#include "platform/win32.h"
#include "processes/participant.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

/** The handles of one thread, by the names of the mutexes. */
class Mutexes
{
public:
    Mutexes() = default;

    ~Mutexes()
    {
        while (!m_handles.empty()) {
            close(m_handles.begin()->first);
        }
    }

    Mutexes(const Mutexes&) = delete;
    Mutexes& operator=(const Mutexes&) = delete;

    bool create(const std::string& name)
    {
        const std::u16string text = textOf(name);
        const HANDLE handle = CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(text.c_str()));
        return handle && (close(name), m_handles.emplace(name, handle).second);
    }

    std::string open(const std::string& name)
    {
        if (const HANDLE handle = opened(name)) {
            close(name);
            m_handles.emplace(name, handle);
            return "true";
        }
        return GetLastError() == ERROR_FILE_NOT_FOUND ? "missing" : "failed";
    }

    bool close(const std::string& name)
    {
        const auto handle = m_handles.find(name);
        return handle != m_handles.end() && CloseHandle(handle->second) != FALSE
            && (m_handles.erase(handle), true);
    }

    std::string wait(const Words& names, DWORD limit)
    {
        std::vector<HANDLE> handles;
        for (const std::string& name : names) {
            handles.push_back(m_handles.at(name));
        }
        const DWORD result = handles.size() == 1
            ? WaitForSingleObject(handles[0], limit)
            : WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), TRUE, limit);
        static const std::map<DWORD, std::string> answers { { WAIT_OBJECT_0, "true" },
            { WAIT_ABANDONED, "abandoned" }, { WAIT_TIMEOUT, "busy" } };
        return answers.count(result) > 0 ? answers.at(result) : "failed";
    }

    bool release(const std::string& name) { return ReleaseMutex(m_handles.at(name)) != FALSE; }

    /** Which of the mutexes of the file "file" have another owner: that of a reader, or of the writer. */
    static std::string owned()
    {
        std::string found;
        for (int slot = -1; slot < 100; ++slot) {
            const std::string number = slot < 0 ? "" : std::to_string(slot);
            const HANDLE handle = opened("file" + number);
            if (handle && WaitForSingleObject(handle, 0) == WAIT_TIMEOUT) {
                found += (found.empty() ? "" : " ") + (slot < 0 ? "writer" : number);
            } else if (handle) {
                ReleaseMutex(handle);
            }
            CloseHandle(handle);
        }
        return found;
    }

    /** Creates, takes, releases and closes them for so many milliseconds. */
    bool often(int milliseconds, const Words& names)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        bool isFine = true;
        while (isFine && std::chrono::steady_clock::now() < end) {
            isFine = forAll(names, &Mutexes::create) && wait(names, INFINITE) != "failed" && isAlone(names)
                && forAll(names, &Mutexes::release) && forAll(names, &Mutexes::close);
        }
        return isFine;
    }

    bool forAll(const Words& names, bool (Mutexes::*call)(const std::string&))
    {
        return std::all_of(
            names.begin(), names.end(), [=](const std::string& name) { return (this->*call)(name); });
    }

private:
    /** As QtLockedFile names the mutexes of the folder's files: "file" is a writer's, "file0" a reader's. */
    static std::u16string textOf(const std::string& name)
    {
        std::string folder = fs::current_path().generic_string();
        std::transform(folder.begin(), folder.end(), folder.begin(),
            [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        return fs::path("QtLockedFile mutex " + folder + "/" + name).u16string();
    }

    static HANDLE opened(const std::string& name)
    {
        const std::u16string text = textOf(name);
        return OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, reinterpret_cast<LPCWSTR>(text.c_str()));
    }

    /** Whether nobody else goes through here with one of the names. */
    static bool isAlone(const Words& names)
    {
        const std::string id = std::to_string(GetCurrentProcessId());
        for (const std::string& name : names) {
            std::ofstream("owner of " + name) << id;
        }
        return std::all_of(names.begin(), names.end(), [&id](const std::string& name) {
            std::string last;
            std::ifstream("owner of " + name) >> last;
            return last == id;
        });
    }

    std::map<std::string, HANDLE> m_handles;
};

} // namespace

Verbs mutexVerbs()
{
    const auto mutexes = std::make_shared<Mutexes>();
    const auto forAll = [=](bool (Mutexes::*call)(const std::string&)) {
        return [=](const Words& names) { return yesOrNo(mutexes->forAll(names, call)); };
    };
    return {
        { "create", forAll(&Mutexes::create) },
        { "open", [=](const Words& names) { return mutexes->open(names.at(0)); } },
        { "close", forAll(&Mutexes::close) },
        { "take", [=](const Words& names) { return mutexes->wait(names, INFINITE); } },
        { "try", [=](const Words& names) { return mutexes->wait(names, 0); } },
        { "release", forAll(&Mutexes::release) },
        { "pass",
            [=](const Words& names) {
                const std::string answer = mutexes->wait(names, INFINITE);
                return mutexes->forAll(names, &Mutexes::release) ? answer : "failed";
            } },
        { "owned", [](const Words&) { return Mutexes::owned(); } },
        { "often",
            [=](const Words& words) {
                return yesOrNo(mutexes->often(std::stoi(words.at(0)), { words.begin() + 1, words.end() }));
            } },
    };
}
