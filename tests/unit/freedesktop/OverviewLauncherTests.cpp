#include "platform/freedesktop/desktops/OverviewLauncher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "platform/freedesktop/desktops/KwinOverview.h"
#include "platform/freedesktop/desktops/ShellOverview.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

using desktop_test::answerWith;
using desktop_test::StandInService;

constexpr std::string_view kLauncher = "com.apple.exposelauncher";

class OverviewLauncherTests : public testing::Test {
  protected:
    // What the completion says about opening the url; "opened" when it says nothing.
    std::string outcomeOf(OverviewLauncher& launcher, const std::string& url) {
        std::vector<std::string> outcomes;
        launcher.open(url, [&](const auto& error) { outcomes.push_back(error.value_or("opened")); });
        EXPECT_TRUE(outcomes.empty());
        EXPECT_TRUE(mainLoop_.runUntil([&] { return !outcomes.empty(); }));
        EXPECT_EQ(outcomes.size(), 1U);
        return outcomes.front();
    }
    // The same for where the launcher says that the overview is.
    std::string launch() {
        EXPECT_TRUE(mainLoop_.runUntil([&] { return launcher_.urlForApplication(kLauncher).has_value(); }));
        return outcomeOf(launcher_, launcher_.urlForApplication(kLauncher).value());
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop mainLoop_;
    ui::QtRunLoop& runLoop_ = mainLoop_.runLoop;
    SystemdLibrary library_;
    MessageBus bus_{library_, runLoop_, runLoop_, [this] { return daemon_.address(); }};
    KwinOverview kwin_{bus_, runLoop_};
    ShellOverview gnomeShell_{bus_, ShellOverview::gnomeShell()};
    std::vector<std::string> installed_;
    OverviewLauncher launcher_{
        bus_, runLoop_, {&kwin_, &gnomeShell_}, {"true", "false", "no-such-program"}, [this](auto program) {
            return std::ranges::count(installed_, program) > 0;
        }};
};

TEST_F(OverviewLauncherTests, KnowsNothingElseAndNothingThatIsNotThere) {
    EXPECT_EQ(launcher_.urlForApplication(kLauncher), std::nullopt);
    EXPECT_EQ(outcomeOf(launcher_, "orvello-overview:desktop/KWin"),
              "there is no overview at orvello-overview:desktop/KWin");
    installed_ = {"false"};
    EXPECT_EQ(launcher_.urlForApplication("com.apple.dock"), std::nullopt);
    EXPECT_EQ(launcher_.urlForApplication(""), std::nullopt);
    EXPECT_EQ(launcher_.urlForApplication(kLauncher), "orvello-overview:program/false");
}

TEST_F(OverviewLauncherTests, OpensKwinsOverviewByItsShortcut) {
    installed_ = {"true"};
    std::string shortcut;
    StandInService shortcuts(daemon_.address(), "org.kde.kglobalaccel", [&](auto* call, auto*) {
        const char* name = nullptr;
        const int read = sd_bus_message_read(call, "s", &name);
        if (read > 0) shortcut = name;
        return read;
    });
    const StandInService kwin(daemon_.address(), "org.kde.KWin", answerWith("v", "as", 0));
    EXPECT_TRUE(mainLoop_.runUntil([&] { return kwin_.openingCall().has_value(); }));
    EXPECT_EQ(launch(), "opened");
    EXPECT_EQ(shortcuts.calls(),
              std::vector<std::string>{"/component/kwin org.kde.kglobalaccel.Component.invokeShortcut"});
    EXPECT_EQ(shortcut, "Overview");
}

TEST_F(OverviewLauncherTests, SetsTheShellsProperty) {
    std::string set;
    const StandInService shell(daemon_.address(), "org.gnome.Shell", [&](auto* call, auto* reply) {
        if (std::string_view(sd_bus_message_get_member(call)) != "Set")
            return sd_bus_message_append(reply, "v", "b", 0);
        const char* interface = nullptr;
        const char* property = nullptr;
        int value = 0;
        const int read = sd_bus_message_read(call, "ssv", &interface, &property, "b", &value);
        if (read > 0) set = std::string(interface) + "." + property + "=" + std::to_string(value);
        return read;
    });
    EXPECT_EQ(launch(), "opened");
    EXPECT_EQ(set, "org.gnome.Shell.OverviewActive=1");
}

TEST_F(OverviewLauncherTests, SaysWhenTheDesktopRefusesOrHangs) {
    for (const bool hangs : {false, true}) {
        const StandInService shell(daemon_.address(), "org.gnome.Shell",
                                   hangs ? nullptr : StandInService::Answer([](auto*, auto*) { return -1; }));
        EXPECT_EQ(launch(), "GNOME Shell does not open its overview");
    }
}

TEST_F(OverviewLauncherTests, StartsAProgramThatIsInstalled) {
    installed_ = {"true", "false"};
    EXPECT_EQ(launch(), "opened");
    installed_ = {"no-such-program"};
    EXPECT_EQ(launch(), "no-such-program could not be started");
}

TEST_F(OverviewLauncherTests, DeliversNothingWhenItIsGone) {
    bool delivered = false;
    {
        OverviewLauncher gone(bus_, runLoop_, {}, {"true"});
        gone.open("orvello-overview:program/true", [&](const auto&) { delivered = true; });
    }
    EXPECT_EQ(outcomeOf(launcher_, "orvello-overview:program/true"), "opened");
    EXPECT_FALSE(delivered);
}

TEST(ProgramSearchTests, FindsWhatCanBeStarted) {
    const desktop_test::TemporaryFolder folder;
    const auto path = folder.path().string();
    std::ofstream(folder.path() / "text") << "no program";
    std::filesystem::create_directory(folder.path() / "folder");
    std::filesystem::create_symlink("/bin/sh", folder.path() / "link");
    EXPECT_TRUE(findProgramInFolders("link", "/nowhere::" + path));
    for (const char* other : {"text", "folder", "nothing"})
        EXPECT_FALSE(findProgramInFolders(other, path)) << other;
    EXPECT_FALSE(findProgramInFolders("link", "/nowhere:"));
    EXPECT_TRUE(isProgramInstalled("sh"));
}

}  // namespace
}  // namespace platform::freedesktop
