#include "platform/freedesktop/desktops/FileManagerBrowser.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <future>
#include <iterator>
#include <optional>

#include "platform/freedesktop/processes/Spawn.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

using desktop_test::PrivateBus;
using desktop_test::StandInService;

class FileManagerBrowserTests : public testing::Test {
  protected:
    PrivateBus daemon_;
    desktop_test::MainLoop mainLoop_;
    ui::QtRunLoop& runLoop_ = mainLoop_.runLoop;
    SystemdLibrary library_;
    MessageBus bus_{library_, runLoop_, runLoop_, [this] { return daemon_.address(); }};
    std::vector<std::filesystem::path> opened_;
    FileManagerBrowser browser_{bus_, [this](const auto& folder) { opened_.push_back(folder); }};
};

TEST_F(FileManagerBrowserTests, AsksTheFileManagerToShowTheFile) {
    std::promise<std::string> shown;
    const StandInService manager(daemon_.address(), "org.freedesktop.FileManager1", [&](auto* call, auto*) {
        const char* uri = nullptr;
        const char* startupId = nullptr;
        const int read = sd_bus_message_read(call, "ass", 1, &uri, &startupId);
        if (read > 0) shown.set_value(uri);
        return read;
    });
    browser_.reveal("/home/ü ser/100%/a#b.txt");
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !manager.calls().empty(); }));
    EXPECT_EQ(shown.get_future().get(), "file:///home/%C3%BC%20ser/100%25/a%23b.txt");
    EXPECT_EQ(manager.calls(), std::vector<std::string>{
                                   "/org/freedesktop/FileManager1 org.freedesktop.FileManager1.ShowItems"});
    EXPECT_TRUE(opened_.empty());
}

TEST_F(FileManagerBrowserTests, OpensTheFolderWhenThereIsNoFileManager) {
    browser_.reveal("/home/user/report.txt");
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !opened_.empty(); }));
    daemon_.end();
    browser_.reveal("/tmp/report.txt");
    EXPECT_TRUE(mainLoop_.runUntil([&] { return opened_.size() == 2; }));
    EXPECT_EQ(opened_, (std::vector<std::filesystem::path>{"/home/user", "/tmp"}));
}

TEST(DetachedProcessTests, RunsOnItsOwnAndSaysWhenItCannotStart) {
    const desktop_test::TemporaryFolder folder;
    const auto file = folder.path() / "out";
    // Its session, and which of the first descriptors lead nowhere.
    const std::vector<std::string> script = {
        "-c",
        "r=$(cut -d' ' -f6 /proc/$$/stat; for n in 0 1 3 4 5 6 7 8 9; do "
        "test /proc/$$/fd/$n -ef /dev/null && echo $n; done); echo $r >\"$1.new\"; mv \"$1.new\" \"$1\"",
        "sh", file.string()};
    ASSERT_TRUE(startDetached("sh", script));
    ASSERT_TRUE(desktop_test::waitUntil([&] { return std::filesystem::exists(file); }));
    std::ifstream report(file);
    int session = 0;
    report >> session;
    EXPECT_NE(session, ::getsid(0));
    EXPECT_EQ(std::vector<int>(std::istream_iterator<int>(report), {}), (std::vector{0, 1}));
    EXPECT_TRUE(desktop_test::waitUntil([&] { return ::kill(session, 0) != 0; })) << "its end is awaited";
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
