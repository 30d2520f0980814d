// What the files behind the named mutexes must stand, and must not do to others.

#include "platform/win32.h"
#include "processes/scene.h"

#include <csignal>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

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

TEST_CASE("A mutex is a file of the user's own, in a folder of his that is seen to be in use")
{
    const Scene scene; // elsewhere
    const HANDLE handle = CreateMutexW(nullptr, FALSE, u"vantkit-test-secret");
    const fs::path folder = "/tmp/vantkit-" + std::to_string(geteuid());
    int count = 0;
    for (const auto& open : fs::directory_iterator("/proc/self/fd")) {
        std::error_code isListingItself;
        const fs::path path = fs::read_symlink(open.path(), isListingItself);
        if (path.extension() == ".mutex") {
            ++count;
            CHECK(path.parent_path() == folder);
            CHECK(fs::status(path).permissions() == (fs::perms::owner_read | fs::perms::owner_write));
            CHECK(path.string().find("secret") == std::string::npos);
            const int number = std::stoi(open.path().filename());
            CHECK(number > 500); // which the kernel closes before the sockets
            CHECK(fcntl(number, F_GETFD) == FD_CLOEXEC);
        }
    }
    CHECK(count == 1);
    const int other = ::open(folder.c_str(), O_RDONLY);
    CHECK(flock(other, LOCK_EX | LOCK_NB) == -1);
    close(other);
    CloseHandle(handle);
}

TEST_CASE("A handle that is closed has no mutex, whoever else has its file open")
{
    const HANDLE handle = CreateMutexW(nullptr, FALSE, u"vantkit-test");
    const HANDLE other = CreateMutexW(nullptr, FALSE, u"vantkit-test");
    CHECK(WaitForSingleObject(handle, 0) == WAIT_OBJECT_0);
    const pid_t child = fork();
    while (child == 0) {
        pause();
    }
    CHECK(CloseHandle(handle));
    CHECK(WaitForSingleObject(other, 0) == WAIT_ABANDONED);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    CloseHandle(other);
}

TEST_CASE("Scenes of mutexes and their files")
{
    const std::string removed =
        "P1 create a; P2 create a; Q create a; S create a; P1 take a; S take a!: begun; "
        "P remove-files; R create a; R try a: busy; Q try a: busy; "
        "P2 try a: busy; R take a: failed; S waits; ";
    const std::string later =
        "S answers; Q try a: busy; R try a: busy; R take a!: begun; S release a; R answers; "
        "Q try a: busy; R kill; Q take a: abandoned";
    const std::string restedWaits =
        "P create b; Q create b a; R create a; P take b; Q take b a!: begun; R take a; P release b; "
        "Q waits; Q waits; Q waits; Q waits; Q waits; Q waits; R release a; Q answers; Q is-rested";
    const std::string noNote =
        "P limit-writing 0; P create a; Q open a; P take a; Q try a: busy; P release a; Q take a; "
        "P try a: busy; Q release a; P take a; P kill; Q take a";
    const std::string fewFiles = "P limit-files 100; P create a; P take a; Q open a; Q try a: busy";
    for (const std::string& steps :
        { removed + "P1 release a; " + later, removed + "P kill; " + later, restedWaits, noNote, fewFiles }) {
        CHECK(Scene().play(steps) == "");
    }
}

TEST_CASE("A folder that is removed under an owner does not make two of them" * doctest::skip(geteuid() != 0))
{
    const Stranger stranger;
    Scene scene;
    REQUIRE(
        scene.play("P" + stranger.become + "P create a; P take a; Q" + stranger.become + "Q create a") == "");
    fs::remove_all(stranger.folder);
    CHECK(scene.play("R" + stranger.become
              + "R create a; R try a: busy; Q try a: busy; P release a; R take a; P try a: busy; "
                "Q try a: busy; R release a; Q take a; P try a: busy; Q kill; P take a: abandoned")
        == "");
}

TEST_CASE("What stands in the place of the folder is taken if it is ours" * doctest::skip(geteuid() != 0))
{
    for (const std::string intruder : { "link", "folder of another", "folder" }) {
        CAPTURE(intruder);
        const Stranger stranger;
        if (intruder == "link") {
            fs::create_directory_symlink("/tmp", stranger.folder);
        } else {
            fs::create_directory(stranger.folder);
        }
        if (intruder == "folder") {
            CHECK(chown(stranger.folder.c_str(), stranger.user, 0) == 0);
        }
        const std::string steps = intruder == "folder" ? "P create a; Q create a; P take a; Q take a"
                                                       : "P create a: false; P open a: failed";
        CHECK(Scene().play("P" + stranger.become + steps) == "");
        CHECK((fs::status(stranger.folder).permissions() == fs::perms::owner_all) == (intruder == "folder"));
    }
}

TEST_CASE("Who is stopped at any moment does not hold up a call that must not wait")
{
    Scene scene;
    REQUIRE(scene.play("P often 3600000 a b!: begun") == "");
    for (unsigned round = 0; round < 50; ++round) {
        REQUIRE(scene.play("P stop; Q create a b; Q try a b: *; Q release a b: *; Q create c; Q open a; P go")
            == "");
        Sleep(round % 5);
    }
    CHECK(scene.play("P kill") == "");
}
