#include "platform/freedesktop/FileManagerBrowser.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <optional>

#include "platform/freedesktop/DetachedProcess.h"
#include "tests/support/PollRunLoop.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

using desktop_test::PrivateBus;
using desktop_test::StandInService;

class FileManagerBrowserTests : public testing::Test {
  protected:
    PrivateBus daemon_;
    desktop_test::PollRunLoop runLoop_;
    SystemdLibrary library_;
    SessionBus bus_{library_, runLoop_, runLoop_, [this] { return daemon_.address(); }};
    std::vector<std::filesystem::path> opened_;
    FileManagerBrowser browser_{bus_, [this](const auto& folder) { opened_.push_back(folder); }};
};

TEST_F(FileManagerBrowserTests, AsksTheFileManagerToShowTheFile) {
    std::vector<std::string> shown;
    std::mutex lock;
    const StandInService manager(daemon_.address(), "org.freedesktop.FileManager1", [&](auto* call, auto*) {
        const char* uri = nullptr;
        const char* startupId = nullptr;
        const int read = sd_bus_message_read(call, "ass", 1, &uri, &startupId);
        const std::scoped_lock guard(lock);
        if (read > 0) shown.emplace_back(uri);
        return read;
    });
    browser_.reveal("/home/ü ser/100%/a#b.txt");
    EXPECT_TRUE(runLoop_.runUntil([&] {
        const std::scoped_lock guard(lock);
        return !shown.empty();
    }));
    EXPECT_EQ(shown, std::vector<std::string>{"file:///home/%C3%BC%20ser/100%25/a%23b.txt"});
    EXPECT_EQ(manager.calls(), std::vector<std::string>{
                                   "/org/freedesktop/FileManager1 org.freedesktop.FileManager1.ShowItems"});
    EXPECT_TRUE(opened_.empty());
}

TEST_F(FileManagerBrowserTests, OpensTheFolderWhenThereIsNoFileManager) {
    browser_.reveal("/home/user/report.txt");
    EXPECT_TRUE(runLoop_.runUntil([&] { return !opened_.empty(); }));
    daemon_.end();
    browser_.reveal("/tmp/report.txt");
    EXPECT_TRUE(runLoop_.runUntil([&] { return opened_.size() == 2; }));
    EXPECT_EQ(opened_, (std::vector<std::filesystem::path>{"/home/user", "/tmp"}));
}

TEST(DetachedProcessTests, RunsOnItsOwnAndSaysWhenItCannotStart) {
    const desktop_test::TemporaryFolder folder;
    const auto file = folder.path() / "out";
    const std::vector<std::string> script = {
        "-c", "cut -d' ' -f6 /proc/self/stat > \"$1.new\"; mv \"$1.new\" \"$1\"", "sh", file.string()};
    ASSERT_TRUE(startDetached("sh", script));
    ASSERT_TRUE(desktop_test::waitUntil([&] { return std::filesystem::exists(file); }));
    int session = 0;
    std::ifstream(file) >> session;
    EXPECT_NE(session, ::getsid(0));
    EXPECT_FALSE(startDetached("/no/such/program", {}));
    EXPECT_FALSE(startDetached("no-such-program", {}));
}

TEST(DetachedProcessTests, DoesNotPassOnThatWeDoWithoutABus) {
    const desktop_test::TemporaryFolder folder;
    const char* before = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    const std::optional<std::string> kept = before ? std::optional<std::string>(before) : std::nullopt;
    for (const auto& [address, passedOn] :
         {std::pair{kNoSessionBus, "not set"}, {"unix:path=/a/bus", "unix:path=/a/bus"}}) {
        const auto file = folder.path() / (address == kNoSessionBus ? "without" : "with");
        ::setenv("DBUS_SESSION_BUS_ADDRESS", address, 1);
        const std::vector<std::string> script = {
            "-c", "echo \"${DBUS_SESSION_BUS_ADDRESS-not set}\" > \"$1.new\"; mv \"$1.new\" \"$1\"", "sh",
            file.string()};
        ASSERT_TRUE(startDetached("sh", script));
        ASSERT_TRUE(desktop_test::waitUntil([&] { return std::filesystem::exists(file); }));
        std::string seen;
        std::getline(std::ifstream(file), seen);
        EXPECT_EQ(seen, passedOn);
    }
    kept ? ::setenv("DBUS_SESSION_BUS_ADDRESS", kept->c_str(), 1) : ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

}  // namespace
}  // namespace platform::freedesktop
