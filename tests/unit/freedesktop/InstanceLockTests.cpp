#include "platform/freedesktop/processes/InstanceLock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <array>
#include <csignal>
#include <fstream>
#include <map>

#include "tests/support/MainLoop.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

namespace fs = std::filesystem;
using Processes = std::vector<ProcessId>;

constexpr std::string_view kOrvello = "org.norvath.orvello";

using Variables = std::map<std::string, std::string>;
Environment environmentOf(const Variables& variables) {
    return [variables](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
}

// Another process with a lock of its own, until it is killed.
class OtherInstance {
  public:
    OtherInstance(const std::string& display, const Variables& variables) {
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe(ready.data()), 0);
        const FileDescriptor reading(ready[0]);
        FileDescriptor writing(ready[1]);
        process_ = ::fork();
        if (process_ == 0) {
            ui::QtRunLoop neverRuns;
            InstanceLock lock(display, neverRuns, environmentOf(variables));
            (void)!::write(writing.number(), "", 1);
            for (;;) ::pause();
        }
        writing = FileDescriptor();
        char byte = 1;
        EXPECT_EQ(::read(reading.number(), &byte, 1), 1);
    }
    OtherInstance(const OtherInstance&) = delete;
    OtherInstance& operator=(const OtherInstance&) = delete;
    ~OtherInstance() { kill(); }

    [[nodiscard]] ProcessId process() const { return process_; }
    void kill() {
        const auto process = std::exchange(process_, -1);
        if (process < 0) return;
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }

  private:
    pid_t process_ = -1;
};

class InstanceLockTest : public testing::Test {
  protected:
    [[nodiscard]] InstanceLock lockFor(const std::string& display) {
        return InstanceLock(display, mainLoop_.runLoop, environmentOf(variables_));
    }
    void write(const std::string& text) const { std::ofstream(file_) << text; }
    [[nodiscard]] std::string read() const {
        std::ifstream stream(file_);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    desktop_test::MainLoop mainLoop_;
    desktop_test::TemporaryFolder runtime_, temporary_;
    Variables variables_ = {{"XDG_RUNTIME_DIR", runtime_.path()}, {"TMPDIR", temporary_.path()}};
    fs::path file_ = runtime_.path() / "orvello-%3A7.lock";
};

TEST_F(InstanceLockTest, KnowsTheOneOtherInstanceAndTakesOverWhenItHasDied) {
    OtherInstance other(":7", variables_);
    auto lock = lockFor(":7");
    EXPECT_NE(lock.currentProcess(), other.process());
    EXPECT_EQ(lock.withBundleIdentifier(kOrvello), Processes{other.process()});
    EXPECT_EQ(lock.withBundleIdentifier("org.norvath.orvello.pro"), Processes{});
    EXPECT_FALSE(lock.takeOver(other.process()));
    EXPECT_EQ(read(), std::to_string(other.process()) + "\n");
    EXPECT_EQ(fs::status(file_).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::sticky_bit)
        << "private, and kept when runtime files are cleaned up";
    write("no number at all, and a long one, longer than any process id has digits");
    EXPECT_EQ(lock.withBundleIdentifier(kOrvello), Processes{other.process()});

    const auto dead = other.process();
    other.kill();
    EXPECT_TRUE(lock.takeOver(dead));
    EXPECT_TRUE(lock.takeOver(dead)) << "asked again";
    EXPECT_EQ(lock.withBundleIdentifier(kOrvello), Processes{});
    EXPECT_EQ(read(), std::to_string(lock.currentProcess()) + "\n");
}

TEST_F(InstanceLockTest, KeepsTheDisplaysApart) {
    const OtherInstance other("host/unix:7.0", variables_);
    struct Row {
        const char* display;
        bool isTaken;
    };
    for (const auto& [display, isTaken] :
         {Row{"host/unix:7", true}, Row{"host/unix:7.1", true}, Row{"host/unix:77", false},
          Row{"host_unix:7", false}, Row{"host.7", false}, Row{"", false}})
        EXPECT_EQ(lockFor(display).withBundleIdentifier(kOrvello).size(), isTaken ? 1U : 0U) << display;
}

TEST_F(InstanceLockTest, FallsBackToAPrivateFolderUnderTheTemporaryOne) {
    for (const std::string runtimeFolder : {"", "relative", "/nowhere/at/all", "/proc/self/fdinfo"}) {
        SCOPED_TRACE(runtimeFolder);
        variables_["XDG_RUNTIME_DIR"] = runtimeFolder;
        const OtherInstance other(":7", variables_);
        EXPECT_EQ(lockFor(":7").withBundleIdentifier(kOrvello), Processes{other.process()});
    }
    const auto folder = temporary_.path() / ("orvello-" + std::to_string(::geteuid()));
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(InstanceLockTest, UsesNothingThatSomebodyElseMayHavePlanted) {
    variables_.erase("XDG_RUNTIME_DIR");
    const auto folder = temporary_.path() / ("orvello-" + std::to_string(::geteuid()));
    const auto elsewhere = temporary_.path() / "elsewhere";
    fs::create_directory(elsewhere);
    fs::permissions(elsewhere, fs::perms::owner_all);
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"a link", [&] { fs::create_directory_symlink(elsewhere, folder); }},
        {"a folder that is open to others",
         [&] {
             fs::create_directory(folder);
             fs::permissions(folder, fs::perms::all);
         }},
        {"a file", [&] { std::ofstream(folder) << "text"; }},
        {"another user's folder",
         [&] {
             fs::create_directory(folder);
             fs::permissions(folder, fs::perms::owner_all);
             // Only the superuser can make one; for others this row is the folder's own case again.
             if (::chown(folder.c_str(), 1, 1) != 0) fs::remove(folder);
         }},
    };
    for (const auto& [name, plant] : rows) {
        SCOPED_TRACE(name);
        plant();
        const bool isPlanted = fs::exists(fs::symlink_status(folder));
        const OtherInstance other(":7", variables_);
        EXPECT_EQ(lockFor(":7").withBundleIdentifier(kOrvello).empty(), isPlanted);
        EXPECT_TRUE(fs::is_empty(elsewhere));
        fs::remove_all(folder);
    }
}

TEST_F(InstanceLockTest, StartsWhereTheLockCannotBe) {
    variables_["TMPDIR"] = "/proc";
    const auto target = temporary_.path() / "target";
    desktop_test::writeFile(target, "precious");
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"a folder", [&] { fs::create_directory(file_); }},
        {"a link", [&] { fs::create_symlink(target, file_); }},
        {"a pipe", [&] { ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0); }},
        {"no folder", [&] { variables_["XDG_RUNTIME_DIR"] = "/proc/self/fdinfo"; }},
    };
    for (const auto& [name, plant] : rows) {
        SCOPED_TRACE(name);
        plant();
        const OtherInstance other(":7", variables_);
        auto lock = lockFor(":7");
        EXPECT_EQ(lock.withBundleIdentifier(kOrvello), Processes{});
        EXPECT_TRUE(lock.takeOver(other.process()));
        fs::remove_all(file_);
    }
    std::ifstream stream(target);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "precious");
}

TEST_F(InstanceLockTest, AsksTheRunningInstanceToComeToTheFrontAndNeverWaits) {
    const auto pipe = runtime_.path() / "orvello-%3A7.activate";
    const std::tuple<const char*, std::function<void()>, int, bool> rows[] = {
        {"a busy one, more often than a pipe holds", [] {}, 70'000, true},
        {"after one that has ended", [&] { ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0); }, 1, true},
        {"a file", [&] { desktop_test::writeFile(pipe, "precious"); }, 1, false},
        {"open to others", [&] { (void)(::mkfifo(pipe.c_str(), 0600) + ::chmod(pipe.c_str(), 0622)); }, 1,
         false}};
    for (const auto& [name, plant, requests, works] : rows) {
        SCOPED_TRACE(name);
        plant();
        auto second = lockFor(":7");
        second.activate(1);
        auto lock = lockFor(":7");
        int activations = 0;
        const auto activated = lock.onActivated([&] { ++activations; });
        lockFor(":8").activate(1);
        QCoreApplication::processEvents();
        EXPECT_EQ(activations, 0) << "nobody meant this one";
        for (int i = 0; i < requests; ++i) second.activate(1);
        QCoreApplication::processEvents();
        EXPECT_EQ(activations > 0, works);
        EXPECT_TRUE(!fs::is_regular_file(pipe) || fs::file_size(pipe) == 8);
        fs::remove(pipe);
    }
}

TEST_F(InstanceLockTest, LeavesTheLockToNoChild) {
    pid_t child = -1;
    {
        auto lock = lockFor(":7");
        child = ::fork();
        if (child == 0)
            for (;;) ::pause();
    }
    const OtherInstance next(":7", variables_);
    EXPECT_EQ(lockFor(":7").withBundleIdentifier(kOrvello), Processes{next.process()});
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

}  // namespace
}  // namespace platform::freedesktop
