#include "platform/win32.h"
#include "processes/participant.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <type_traits>

namespace {

namespace fs = std::filesystem;

/** As QtLockedFile names the mutexes of the folder's files: "file" is a writer's, "file0" a reader's. */
auto textOf(const std::string& name)
{
    std::string folder = fs::current_path().generic_string();
    std::transform(folder.begin(), folder.end(), folder.begin(), ::tolower);
    return fs::path("QtLockedFile mutex " + folder + "/" + name)
        .string<std::remove_const_t<std::remove_pointer_t<LPCWSTR>>>();
}

HANDLE opened(const std::string& name)
{
    return OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, textOf(name).c_str());
}

/** Whether nobody else goes through here with one of the names. */
bool isAlone(const Words& names)
{
    const std::string id = std::to_string(GetCurrentProcessId());
    for (const std::string& name : names) {
        std::ofstream("owner of " + name) << id;
    }
    return std::all_of(names.begin(), names.end(), [&id](const std::string& name) {
        std::string last;
        return std::ifstream("owner of " + name) >> last && last == id;
    });
}

/** Which of the mutexes of the file "file" have another owner: that of a reader, or of the writer. */
std::string owned(const Words& /*words*/)
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

/** The handles of one thread, by the names of the mutexes. */
class Mutexes
{
public:
    bool create(const std::string& name)
    {
        return keep(name, CreateMutexW(nullptr, FALSE, textOf(name).c_str()));
    }

    std::string open(const std::string& name)
    {
        return keep(name, opened(name))              ? "true"
            : GetLastError() == ERROR_FILE_NOT_FOUND ? "missing"
                                                     : "failed";
    }

    bool close(const std::string& name) { return m_handles.erase(name) > 0; }

    bool release(const std::string& name) { return ReleaseMutex(m_handles.at(name).get()) != FALSE; }

    std::string wait(const Words& names, DWORD limit)
    {
        std::vector<HANDLE> handles;
        for (const std::string& name : names) {
            handles.push_back(m_handles.at(name).get());
        }
        const DWORD result = handles.size() == 1
            ? WaitForSingleObject(handles[0], limit)
            : WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), TRUE, limit);
        return result == WAIT_OBJECT_0 ? "true"
            : result == WAIT_ABANDONED ? "abandoned"
            : result == WAIT_TIMEOUT   ? "busy"
                                       : "failed";
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
    bool keep(const std::string& name, HANDLE handle)
    {
        if (handle) {
            m_handles[name].reset(handle, CloseHandle);
        }
        return handle != nullptr;
    }

    std::map<std::string, std::shared_ptr<void>> m_handles;
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
        { "owned", owned },
        { "often",
            [=](const Words& words) {
                return yesOrNo(mutexes->often(std::stoi(words.at(0)), { words.begin() + 1, words.end() }));
            } },
    };
}
