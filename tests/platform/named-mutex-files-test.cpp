// What the files behind the named mutexes must stand, and must not do to others.

#include "platform/win32.h"
#include "processes/scene.h"

#include <cstring>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const std::string allFine;
constexpr const char16_t* name = u"vantkit-test-secret";

/** What the open files of this process are, by the number of the descriptor. */
std::map<int, fs::path> openFiles()
{
    std::map<int, fs::path> files;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code isListingItself;
        files[std::stoi(entry.path().filename())] = fs::read_symlink(entry.path(), isListingItself);
    }
    return files;
}

/** A user whom nobody else is, and his private folder, which tests may play with. */
struct Stranger
{
    Stranger() = default;

    ~Stranger() { fs::remove_all(folder); }

    Stranger(const Stranger&) = delete;
    Stranger& operator=(const Stranger&) = delete;

    const uid_t user = 1000000 + static_cast<uid_t>(getpid());
    const fs::path folder = "/tmp/vantkit-" + std::to_string(user);
    const std::string become = " become " + std::to_string(user) + "; ";
};

} // namespace

TEST_CASE("A mutex is a file of the user's own, which does not tell its name and is not handed on")
{
    const HANDLE handle = CreateMutexW(nullptr, FALSE, name);
    std::size_t count = 0;
    for (const auto& [number, path] : openFiles()) {
        if (path.extension() == ".mutex") {
            ++count;
            CHECK(path.parent_path() == "/tmp/vantkit-" + std::to_string(geteuid()));
            CHECK(fs::status(path).permissions() == (fs::perms::owner_read | fs::perms::owner_write));
            CHECK(fs::status(path.parent_path()).permissions() == fs::perms::owner_all);
            CHECK(path.string().find("secret") == std::string::npos);
            CHECK(fcntl(number, F_GETFD) == FD_CLOEXEC);
        }
    }
    CHECK(count == 1);
    const auto before = openFiles();
    CloseHandle(CreateMutexW(nullptr, FALSE, name));
    CHECK(openFiles() == before);
    CHECK(CloseHandle(handle));
}

TEST_CASE("Cleaners of temporary files see that the folder is in use")
{
    Scene scene;
    CHECK(scene.play("P create a") == allFine);
    const int folder = ::open(("/tmp/vantkit-" + std::to_string(geteuid())).c_str(), O_RDONLY);
    CHECK(flock(folder, LOCK_EX | LOCK_NB) == -1);
    close(folder);
}

TEST_CASE("Who waits costs no time")
{
    CHECK(Scene().play(
              "P create b; Q create b a; R create a; P take b; Q take b a!: begun; R take a; P release b; "
              "Q waits; Q waits; Q waits; Q waits; Q waits; Q waits; R release a; Q answers; Q is-rested")
        == allFine);
}

TEST_CASE("No variable of the environment keeps processes apart")
{
    CHECK(Scene().play("P create a; Q set TMPDIR /nowhere; Q set XDG_RUNTIME_DIR /nowhere; Q set HOME "
                       "/nowhere; Q open a")
        == allFine);
}

TEST_CASE("A file that is removed under an owner does not make two of them")
{
    const std::string beginning =
        "P1 create a; P2 open a; Q open a; S open a; P1 take a; S take a!: begun; P remove-files; "
        "R create a; R try a: busy; Q try a: busy; P2 try a: busy; P3 create a; "
        "P3 try a: busy; R take a: failed; S waits; ";
    const std::string ending =
        "S answers; Q try a: busy; R try a: busy; R take a!: begun; S release a; R answers; "
        "Q try a: busy; R kill; Q take a: abandoned";
    CHECK(Scene().play(beginning + "P1 release a; " + ending) == allFine);
    CHECK(Scene().play(beginning + "P kill; " + ending) == allFine);
    CHECK(Scene().play("P create a; P take a; P remove-files; P close a; Q create a; Q take a") == allFine);
}

TEST_CASE("A folder that is removed under an owner does not make two of them" * doctest::skip(geteuid() != 0))
{
    const Stranger stranger;
    Scene scene;
    CHECK(scene.play("P" + stranger.become + "P create a; P take a; Q" + stranger.become + "Q open a")
        == allFine);
    fs::remove_all(stranger.folder);
    CHECK(scene.play("R" + stranger.become
              + "R create a; R try a: busy; Q try a: busy; P release a; R take a; "
                "P try a: busy; Q try a: busy; R release a; Q take a; P try a: busy; R try a: busy; Q kill; "
                "P take a: abandoned")
        == allFine);
}

TEST_CASE(
    "What stands in the place of the folder, and is not ours, is refused" * doctest::skip(geteuid() != 0))
{
    const std::vector<std::function<void(const Stranger&)>> intruders {
        [](const Stranger& stranger) {
            fs::create_directory_symlink(stranger.folder / "..", stranger.folder);
        },
        [](const Stranger& stranger) { std::ofstream(stranger.folder) << "x"; },
        [](const Stranger& stranger) { fs::create_directory(stranger.folder); },
    };
    for (const auto& intrude : intruders) {
        const Stranger stranger;
        intrude(stranger);
        const fs::perms before = fs::symlink_status(stranger.folder).permissions();
        CHECK(Scene().play("P" + stranger.become + "P create a: false; P open a: failed") == allFine);
        CHECK(fs::symlink_status(stranger.folder).permissions() == before);
    }
    const Stranger stranger;
    fs::create_directory(stranger.folder);
    fs::permissions(stranger.folder, fs::perms::all);
    CHECK(chown(stranger.folder.c_str(), stranger.user, 0) == 0);
    CHECK(Scene().play("P" + stranger.become + "P create a; Q create a; P take a; Q take a") == allFine);
    CHECK(fs::status(stranger.folder).permissions() == fs::perms::owner_all);
}

TEST_CASE("A note that cannot be written costs nothing but the knowledge of an owner's end")
{
    CHECK(
        Scene().play("P write-nothing; P create a; Q open a; P take a; Q try a: busy; P release a; Q take a; "
                     "P try a: busy; Q release a; P take a; Q try a: busy; P kill; Q take a")
        == allFine);
}

TEST_CASE("Who is stopped at any moment does not hold up a call that must not wait")
{
    Scene scene;
    CHECK(scene.play("P often 3600000 a b!: begun") == allFine);
    for (unsigned round = 0; round < 50; ++round) {
        CAPTURE(round);
        CHECK(
            scene.play(
                "P stop; Q create a b; Q try a b: *; Q release a b: *; Q create c; Q open a; Q close a; P go")
            == allFine);
        Sleep(round % 5);
    }
    CHECK(scene.play("P kill") == allFine);
}
