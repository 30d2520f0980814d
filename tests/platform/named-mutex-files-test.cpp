// What the files behind the named mutexes must stand, and must not do to others.

#include "agent.h"
#include "counter-race.h"
#include "platform/last-error_p.h"
#include "platform/named-mutex_p.h"
#include "system.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <doctest/doctest.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace vantkit::internal;
namespace fs = std::filesystem;

namespace {

using Existed = MutexFile::Answer;
using Paths = std::set<fs::path>;

constexpr auto ownersFile = fs::perms::owner_read | fs::perms::owner_write;
constexpr auto ownersFolder = fs::perms::owner_all;

class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = fs::temp_directory_path() / "vantkit-test-XXXXXX";
        m_path = mkdtemp(name.data());
    }

    ~TemporaryFolder()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

/** Lowers a limit of this process for a while. */
class Limit
{
public:
    using Resource = decltype(RLIMIT_NOFILE);

    Limit(Resource resource, rlim_t value)
        : m_resource(resource)
    {
        getrlimit(resource, &m_former);
        const rlimit lowered { value, m_former.rlim_max };
        setrlimit(resource, &lowered);
    }

    ~Limit() { setrlimit(m_resource, &m_former); }

    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

private:
    Resource m_resource;
    rlimit m_former {};
};

Paths filesIn(const fs::path& folder)
{
    Paths paths;
    for (const auto& entry : fs::directory_iterator(folder)) {
        paths.insert(entry.path());
    }
    return paths;
}

/** What the open files of this process are, by the number of the descriptor. */
std::set<std::pair<std::string, fs::path>> openFiles()
{
    std::set<std::pair<std::string, fs::path>> files;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code isListingItself;
        files.emplace(entry.path().filename(), fs::read_symlink(entry.path(), isListingItself));
    }
    return files;
}

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void writeFile(const fs::path& file, const std::string& content)
{
    std::ofstream(file, std::ios::binary) << content;
}

fs::perms permissionsOf(const fs::path& path)
{
    return fs::status(path).permissions();
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
    const Paths files = filesIn(folder);
    REQUIRE(files.size() == 1);
    return *files.begin();
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

bool isRefusal(DWORD code)
{
    return code == ERROR_ACCESS_DENIED || code == ERROR_PATH_NOT_FOUND;
}

/** All that lies below a folder, as far as it can be changed by opening it. */
std::map<fs::path, std::pair<fs::perms, std::string>> everythingIn(const fs::path& folder)
{
    std::map<fs::path, std::pair<fs::perms, std::string>> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const fs::file_status status = entry.symlink_status();
        found[entry.path()] = { status.permissions(), fs::is_regular_file(status) ? contentOf(entry) : "" };
    }
    return found;
}

uid_t ownerOf(const fs::path& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? status.st_uid : static_cast<uid_t>(-1);
}

/** The system's, unless that is us, who can give away one of ours. */
fs::path folderOfAnother(const fs::path& ours)
{
    if (ownerOf("/usr") != geteuid()) {
        return "/usr";
    }
    REQUIRE(chown(ours.c_str(), 1, 1) == 0);
    return ours;
}

rlim_t firstUnusedDescriptor()
{
    const int descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return static_cast<rlim_t>(descriptor);
}

} // namespace

TEST_CASE("A mutex is a file of the user's own while it exists, and that file does not tell its name")
{
    const std::string user = std::to_string(geteuid());
    const fs::path own = "/run/user/" + user;

    const bool hasOwn = fs::is_directory(fs::symlink_status(own)) && ownerOf(own) == geteuid();
    const fs::path expectedFolder = hasOwn ? own : fs::path("/tmp/vantkit-" + user);

    const auto before = openFiles();
    const HANDLE handle = CreateMutexW(nullptr, FALSE, (uniqueName() + u"secret").c_str());
    REQUIRE(handle != nullptr);
    Paths files;
    for (const auto& [number, file] : openFiles()) {
        if (file.extension() == ".mutex" && before.count({ number, file }) == 0) {
            files.insert(file);
        }
    }
    REQUIRE(files.size() == 1);
    const fs::path file = *files.begin();
    CHECK(file.parent_path() == expectedFolder);
    CHECK(permissionsOf(file) == ownersFile);
    CHECK(permissionsOf(expectedFolder) == ownersFolder);
    CHECK(file.filename().string().find("secret") == std::string::npos);
    CHECK(file.filename().string().find("test") == std::string::npos);

    CHECK(CloseHandle(handle));
    CHECK_FALSE(fs::exists(file));
    CHECK(openFiles() == before);
}

TEST_CASE("No variable of the environment keeps processes apart")
{
    const TemporaryFolder folder;
    const std::u16string shared = uniqueName();
    AgentThread home;
    const Agent::Handle handle = home.create(shared);
    for (const char* variable : { "XDG_RUNTIME_DIR", "TMPDIR", "HOME", "USER" }) {
        CAPTURE(variable);
        const char* const former = std::getenv(variable);
        const std::string formerValue = former ? former : "";
        setenv(variable, folder.path().c_str(), 1);
        AgentProcess other;
        if (former) {
            setenv(variable, formerValue.c_str(), 1);
        } else {
            unsetenv(variable);
        }
        CHECK(other.take(other.open(shared)) == owned);
        CHECK(home.tryTake(handle) == busy);
        other.kill();
        CHECK(home.tryTake(handle) == abandoned);
        home.releaseAll({ handle });
    }
}

TEST_CASE("Who waits is not woken before its time, and leaves no file open")
{
    const std::u16string shared = uniqueName();
    const auto filesBefore = openFiles();
    AgentThread owner;
    AgentThread waiter;
    const Agent::Handle handle = owner.create(shared);
    CHECK(owner.take(handle) == owned);
    waiter.beginTakeAll({ waiter.open(shared), waiter.create(uniqueName()) });
    Sleep(50);
    rusage before {};
    getrusage(RUSAGE_SELF, &before);
    Sleep(300);
    rusage after {};
    getrusage(RUSAGE_SELF, &after);
    CHECK(after.ru_nvcsw - before.ru_nvcsw < 15);
    owner.releaseAll({ handle });
    CHECK(waiter.answer().result == owned);
    owner.end();
    waiter.end();
    CHECK(openFiles() == filesBefore);
}

TEST_CASE("An owner that closes its handle without a release is told of")
{
    const TemporaryFolder folder;
    auto first = createIn(folder.path());
    const auto second = createIn(folder.path());
    CHECK(first->tryToTake() == WAIT_OBJECT_0);
    first.reset();
    CHECK(second->tryToTake() == WAIT_ABANDONED);
    CHECK(second->release());
    CHECK(second->tryToTake() == WAIT_OBJECT_0);
}

TEST_CASE("A file that lies about, whatever is in it, is as good as none")
{
    const TemporaryFolder folder;
    const fs::path file = fileIn(folder.path());
    std::string content;
    std::uintmax_t size = 0;
    SUBCASE("empty") { }
    SUBCASE("of one who was killed as the owner")
    {
        const auto owner = createIn(folder.path());
        CHECK(owner->tryToTake() == WAIT_OBJECT_0);
        content = contentOf(file);
        size = content.size();
    }
    SUBCASE("of other bytes")
    {
        content = std::string("\0\xff\n\r%s", 6) + std::string(10000, 'o');
        size = content.size();
    }
    SUBCASE("huge")
    {
        size = std::uintmax_t { 1 } << 40U;
    }
    const auto leave = [&] {
        writeFile(file, content);
        fs::resize_file(file, size);
    };

    leave();
    CHECK(mutexIn(folder.path())->open() == Existed::No);
    CHECK(filesIn(folder.path()).empty());

    leave();
    {
        const auto mutex = mutexIn(folder.path());
        const auto other = mutexIn(folder.path());
        CHECK(mutex->create() == Existed::No);
        CHECK(other->open() == Existed::Yes);
        checkThatItWorks(*mutex, *other);
    }
    CHECK(filesIn(folder.path()).empty());
}

TEST_CASE("A file that is damaged while the mutex exists keeps its owner's rights")
{
    const TemporaryFolder folder;
    const auto mutex = createIn(folder.path());
    const auto other = createIn(folder.path());
    const fs::path file = *filesIn(folder.path()).begin();
    for (const std::string& content : { std::string(), std::string(1, '\0'), std::string(10000, 'o') }) {
        CAPTURE(content.size());
        writeFile(file, content);
        checkThatItWorks(*mutex, *other);
        CHECK(mutex->tryToTake() == WAIT_OBJECT_0);
        writeFile(file, content);
        CHECK(other->tryToTake() == WAIT_TIMEOUT);
        CHECK(mutex->release());
        checkThatItWorks(*mutex, *other);
    }
}

TEST_CASE("A folder that is ours is there, and closed to others, when it is needed")
{
    const TemporaryFolder parent;
    const fs::path folder = parent.path() / "folder";
    SUBCASE("missing")
    {
        CHECK(mutexIn(folder)->open() == Existed::No);
        CHECK_FALSE(fs::exists(folder));
    }
    SUBCASE("open to others")
    {
        fs::create_directory(folder);
        fs::permissions(folder, fs::perms::all);
    }
    SUBCASE("closed to ourselves")
    {
        fs::create_directory(folder);
        fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    }
    const auto mutex = mutexIn(folder);
    CHECK(mutex->create() == Existed::No);
    CHECK(permissionsOf(folder) == ownersFolder);
    checkThatItWorks(*mutex, *createIn(folder));
}

TEST_CASE("What stands in the folder's place, and is no folder of ours, is refused and left as it is")
{
    const TemporaryFolder parent;
    const fs::path target = parent.path() / "target";
    const auto resident = createIn(target);
    fs::permissions(target, fs::perms::all);
    fs::path folder = parent.path() / "folder";
    SUBCASE("a link")
    {
        fs::create_directory_symlink(target, folder);
    }
    SUBCASE("a link to nothing")
    {
        fs::create_directory_symlink(parent.path() / "nothing", folder);
    }
    SUBCASE("a file")
    {
        writeFile(folder, "x");
    }
    SUBCASE("another user's folder")
    {
        folder = folderOfAnother(target);
    }
    const auto before = everythingIn(parent.path());
    CHECK(isRefusal(reasonOf(mutexIn(folder)->create())));
    CHECK(isRefusal(reasonOf(mutexIn(folder)->open())));
    CHECK(everythingIn(parent.path()) == before);
}

TEST_CASE("What stands in a file's place, and is no file of ours, is refused and left as it is")
{
    const TemporaryFolder parent;
    const fs::path folder = parent.path() / "folder";
    const fs::path file = fileIn(folder);
    const fs::path target = parent.path() / "target";
    writeFile(target, "x");
    SUBCASE("a link")
    {
        fs::create_symlink(target, file);
    }
    SUBCASE("a link to nothing")
    {
        fs::create_symlink(parent.path() / "nothing", file);
    }
    SUBCASE("a folder")
    {
        fs::create_directory(file);
    }
    SUBCASE("a pipe")
    {
        CHECK(mkfifo(file.c_str(), S_IRWXU) == 0);
    }
    const auto before = everythingIn(parent.path());
    CHECK(isRefusal(reasonOf(mutexIn(folder)->create())));
    CHECK(isRefusal(reasonOf(mutexIn(folder)->open())));
    CHECK(everythingIn(parent.path()) == before);
}

TEST_CASE("What cannot be written fails, and hands nothing out")
{
    std::signal(SIGXFSZ, SIG_IGN);
    const TemporaryFolder folder;
    DWORD code = 0;
    {
        const Limit fileSize(RLIMIT_FSIZE, 0);
        code = reasonOf(mutexIn(folder.path())->create());
    }
    CHECK(code == ERROR_DISK_FULL);
    CHECK(filesIn(folder.path()).empty());

    const auto mutex = createIn(folder.path());
    const auto other = createIn(folder.path());
    DWORD result = 0;
    {
        const Limit fileSize(RLIMIT_FSIZE, 0);
        result = mutex->tryToTake();
    }
    CHECK(result == WAIT_FAILED);
    CHECK_FALSE(mutex->release());
    checkThatItWorks(*other, *mutex);
}

TEST_CASE("What cannot be opened fails, and leaves nothing behind")
{
    const TemporaryFolder folder;
    const auto before = openFiles();
    for (const rlim_t spare : { 0, 1 }) {
        CAPTURE(spare);
        const Limit files(RLIMIT_NOFILE, firstUnusedDescriptor() + spare);
        CHECK(reasonOf(mutexIn(folder.path())->create()) == ERROR_TOO_MANY_OPEN_FILES);
    }
    CHECK(openFiles() == before);
    CHECK(filesIn(folder.path()).empty());
}
