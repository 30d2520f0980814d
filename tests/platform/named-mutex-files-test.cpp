// What the files behind the named mutexes must stand, and must not do to others.

#include "agent.h"
#include "platform/last-error_p.h"
#include "platform/named-mutex_p.h"

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace vantkit::internal;
namespace fs = std::filesystem;

namespace {

using Existed = MutexFile::Answer;
using Content = std::map<fs::path, std::pair<fs::perms, std::string>>;

constexpr auto ownersFile = fs::perms::owner_read | fs::perms::owner_write;
constexpr auto ownersFolder = fs::perms::owner_all;

struct TemporaryFolder
{
    TemporaryFolder() { fs::create_directory(path); }

    ~TemporaryFolder() { fs::remove_all(path); }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path path = fs::temp_directory_path() / uniqueName();
};

/** What the call does while a limit of this process is lowered. */
template <typename Call>
auto underLimit(decltype(RLIMIT_NOFILE) resource, rlim_t value, const Call& call)
{
    rlimit former {};
    getrlimit(resource, &former);
    const rlimit lowered { value, former.rlim_max };
    setrlimit(resource, &lowered);
    const auto result = call();
    setrlimit(resource, &former);
    return result;
}

/** What the open files of this process are, by the number of the descriptor. */
std::map<std::string, fs::path> openFiles()
{
    std::map<std::string, fs::path> files;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code isListingItself;
        files[entry.path().filename()] = fs::read_symlink(entry.path(), isListingItself);
    }
    return files;
}

void writeFile(const fs::path& file, const std::string& content)
{
    std::ofstream(file, std::ios::binary) << content;
}

/** All that lies below a folder, as far as it can be changed by opening it. */
Content contentOf(const fs::path& folder)
{
    Content found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::string content;
        if (fs::is_regular_file(entry.symlink_status())) {
            std::ifstream stream(entry.path(), std::ios::binary);
            content.assign(std::istreambuf_iterator<char>(stream), {});
        }
        found[entry.path()] = { entry.symlink_status().permissions(), content };
    }
    return found;
}

std::shared_ptr<NamedMutex> mutexIn(const fs::path& folder)
{
    return std::make_shared<NamedMutex>(MutexDirectory(folder), u"some name");
}

std::shared_ptr<NamedMutex> createIn(const fs::path& folder)
{
    auto mutex = mutexIn(folder);
    CHECK(mutex->create() != Existed::Failure);
    return mutex;
}

/** The file that stands for the mutex while it exists. */
fs::path fileIn(const fs::path& folder)
{
    const auto mutex = createIn(folder);
    const Content files = contentOf(folder);
    REQUIRE(files.size() == 1);
    return files.begin()->first;
}

/** Two handles exclude each other, and nobody is told of an owner that there was not. */
void checkThatItWorks(NamedMutex& mutex, NamedMutex& other)
{
    CHECK(mutex.tryToTake() == WAIT_OBJECT_0);
    CHECK(other.tryToTake() == WAIT_TIMEOUT);
    CHECK(mutex.release());
    CHECK(other.tryToTake() == WAIT_OBJECT_0);
    CHECK(mutex.tryToTake() == WAIT_TIMEOUT);
    CHECK(other.release());
}

/** What GetLastError says of a call that failed. */
DWORD reasonOf(Existed answer)
{
    CHECK(answer == Existed::Failure);
    setLastErrorFromErrno();
    return GetLastError();
}

} // namespace

TEST_CASE("A mutex is a file of the user's own while it exists, and that file does not tell its name")
{
    const std::string user = std::to_string(geteuid());
    const fs::path own = "/run/user/" + user;
    const auto before = openFiles();
    const HANDLE handle = CreateMutexW(nullptr, FALSE, (uniqueName() + u"secret").c_str());
    REQUIRE(handle != nullptr);
    fs::path file;
    for (const auto& [number, path] : openFiles()) {
        if (path.extension() == ".mutex" && before.count(number) == 0) {
            file = path;
        }
    }
    CHECK(file.parent_path() == (fs::exists(own) ? own : fs::path("/tmp/vantkit-" + user)));
    CHECK(fs::status(file).permissions() == ownersFile);
    CHECK(fs::status(file.parent_path()).permissions() == ownersFolder);
    CHECK(file.string().find("secret") == std::string::npos);
    CHECK(file.string().find("test") == std::string::npos);

    CHECK(CloseHandle(handle));
    CHECK_FALSE(fs::exists(file));
    CHECK(openFiles() == before);
}

TEST_CASE("No variable of the environment keeps processes apart")
{
    const TemporaryFolder folder;
    const std::u16string shared = uniqueName();
    AgentThread home;
    home.create(shared);
    for (const char* variable : { "XDG_RUNTIME_DIR", "TMPDIR", "HOME", "USER" }) {
        CAPTURE(variable);
        const char* const former = std::getenv(variable);
        const std::string formerValue = former ? former : "";
        setenv(variable, folder.path.c_str(), 1);
        AgentProcess other;
        former ? setenv(variable, formerValue.c_str(), 1) : unsetenv(variable);
        CHECK(other.tryOpen(shared).result != 0);
    }
}

TEST_CASE("Who waits costs no time, and has no file that is left open or that a new program gets")
{
    const auto filesBefore = openFiles();
    AgentThread owner;
    AgentThread modest;
    AgentThread greedy;
    const std::u16string name = uniqueName();
    const Agent::Handles handles { owner.create(name), owner.create(uniqueName()) };
    CHECK(owner.take(handles) == owned);
    modest.beginTake({ handles[1] });
    greedy.beginTake({ greedy.open(name), greedy.create(uniqueName()) });
    Sleep(50);
    rusage before {};
    getrusage(RUSAGE_SELF, &before);
    const std::clock_t timeBefore = std::clock();
    Sleep(300);
    rusage after {};
    getrusage(RUSAGE_SELF, &after);
    CHECK(std::clock() - timeBefore < CLOCKS_PER_SEC / 10);
    CHECK(after.ru_nvcsw - before.ru_nvcsw < 15);
    for (const auto& [number, path] : openFiles()) {
        CAPTURE(path);
        CHECK((path.extension() != ".mutex" || fcntl(std::stoi(number), F_GETFD) == FD_CLOEXEC));
    }
    CHECK(owner.release(handles) == done);
    CHECK(modest.answer() == owned);
    CHECK(greedy.answer() == owned);
    owner.end();
    modest.end();
    greedy.end();
    CHECK(openFiles() == filesBefore);
}

TEST_CASE("A file that lies about, whatever is in it, is as good as none")
{
    const TemporaryFolder folder;
    const fs::path file = fileIn(folder.path);
    std::string ofKilledOwner;
    {
        const auto owner = createIn(folder.path);
        CHECK(owner->tryToTake() == WAIT_OBJECT_0);
        ofKilledOwner = contentOf(folder.path)[file].second;
    }
    for (const std::string& content : { std::string(), ofKilledOwner, std::string("\0\xff\n\r%s", 6) }) {
        CAPTURE(content);
        writeFile(file, content);
        CHECK(mutexIn(folder.path)->open() == Existed::No);
        CHECK(fs::is_empty(folder.path));

        writeFile(file, content);
        {
            const auto mutex = mutexIn(folder.path);
            const auto other = mutexIn(folder.path);
            CHECK(mutex->create() == Existed::No);
            CHECK(other->open() == Existed::Yes);
            checkThatItWorks(*mutex, *other);
        }
        CHECK(fs::is_empty(folder.path));
    }
}

TEST_CASE("A file that is damaged while the mutex exists keeps its owner's rights")
{
    const TemporaryFolder folder;
    const auto mutex = createIn(folder.path);
    const auto other = createIn(folder.path);
    CHECK(mutex->tryToTake() == WAIT_OBJECT_0);
    writeFile(contentOf(folder.path).begin()->first, "");
    CHECK(other->tryToTake() == WAIT_TIMEOUT);
    CHECK(mutex->release());
    writeFile(contentOf(folder.path).begin()->first, std::string(10000, 'o'));
    checkThatItWorks(*mutex, *other);
}

TEST_CASE("A folder that is ours is there, and closed to others, when it is needed")
{
    const TemporaryFolder parent;
    const fs::path folder = parent.path / "folder";
    CHECK(mutexIn(folder)->open() == Existed::No);
    CHECK_FALSE(fs::exists(folder));
    for (const bool isThere : { false, true }) {
        CAPTURE(isThere);
        const auto mutex = mutexIn(folder);
        CHECK(mutex->create() == Existed::No);
        CHECK(fs::status(folder).permissions() == ownersFolder);
        checkThatItWorks(*mutex, *createIn(folder));
        fs::permissions(folder, fs::perms::all);
    }
}

TEST_CASE("What stands in the place of a folder or a file, and is not ours, is refused and left as it is")
{
    const TemporaryFolder parent;
    const fs::path target = parent.path / "target";
    const fs::path folder = parent.path / "folder";
    const fs::path inFolder = fileIn(folder);
    const auto resident = createIn(target);
    fs::permissions(target, fs::perms::all);
    fs::path place = folder;
    const auto clear = [&] { return fs::remove(folder); };
    const std::map<std::string, std::function<void()>> intruders {
        { "a link to a folder", [&] { clear(), fs::create_directory_symlink(target, folder); } },
        { "a file as the folder", [&] { clear(), writeFile(folder, "x"); } },
        { "another user's folder", [&] { place = chown(folder.c_str(), 1, 1) == 0 ? folder : "/usr"; } },
        { "a link to a file", [&] { fs::create_symlink(fileIn(target), inFolder); } },
        { "a link to nothing", [&] { fs::create_symlink("nothing", inFolder); } },
        { "a folder as the file", [&] { fs::create_directory(inFolder); } },
        { "a pipe", [&] { CHECK(mkfifo(inFolder.c_str(), S_IRWXU) == 0); } },
    };
    for (const auto& [name, intrude] : intruders) {
        CAPTURE(name);
        fs::remove_all(folder);
        createIn(folder);
        place = folder;
        intrude();
        const Content before = contentOf(parent.path);
        for (const DWORD reason : { reasonOf(mutexIn(place)->create()), reasonOf(mutexIn(place)->open()) }) {
            CHECK((reason == ERROR_ACCESS_DENIED || reason == ERROR_PATH_NOT_FOUND));
        }
        CHECK(contentOf(parent.path) == before);
    }
}

TEST_CASE("What cannot be written fails, and hands nothing out")
{
    std::signal(SIGXFSZ, SIG_IGN);
    const TemporaryFolder folder;
    CHECK(underLimit(RLIMIT_FSIZE, 0, [&] { return reasonOf(mutexIn(folder.path)->create()); })
        == ERROR_DISK_FULL);
    CHECK(fs::is_empty(folder.path));

    const auto mutex = createIn(folder.path);
    const auto other = createIn(folder.path);
    CHECK(underLimit(RLIMIT_FSIZE, 0, [&] { return mutex->tryToTake(); }) == WAIT_FAILED);
    CHECK_FALSE(mutex->release());
    checkThatItWorks(*other, *mutex);
}

TEST_CASE("What cannot be opened fails, and leaves nothing behind")
{
    const TemporaryFolder folder;
    const auto before = openFiles();
    for (const rlim_t spare : { 0, 1 }) {
        CAPTURE(spare);
        const int unused = dup(STDERR_FILENO);
        close(unused);
        const DWORD reason = underLimit(RLIMIT_NOFILE, static_cast<rlim_t>(unused) + spare,
            [&] { return reasonOf(mutexIn(folder.path)->create()); });
        CHECK(reason == ERROR_TOO_MANY_OPEN_FILES);
    }
    CHECK(openFiles() == before);
    CHECK(fs::is_empty(folder.path));
}
