#include "tests/support/PrivateDesktop.h"

#include <gtest/gtest.h>

#include "tests/support/Picture.h"
#include "tests/support/PlainWindow.h"

using namespace desktop_test;

namespace {

struct DesktopCase {
    const char* name;
    WindowManagerOptions windowManager;
};

void PrintTo(const DesktopCase& desktopCase, std::ostream* out) {
    *out << desktopCase.name;
}

class PrivateDesktopTest : public testing::TestWithParam<DesktopCase> {};

// Everything that the other tests lean on: the count of desktops, a window kept on one of them, what the
// screen shows there, a click that arrives, and nothing left behind.
TEST_P(PrivateDesktopTest, ShowsAWindowOnItsDesktopAloneAndLeavesNoProcess) {
    std::string folder;
    {
        PrivateDesktop desktop({.windowManager = GetParam().windowManager});
        folder = desktop.folder();
        auto& x = desktop.x();
        EXPECT_EQ(x.numberOfDesktops(), 3U);
        const Rectangle frame{300, 200, 400, 300};
        PlainWindow window(desktop.display(), {.frame = frame, .color = 0xCC5500, .desktop = 1});
        ASSERT_TRUE(waitUntil([&] { return x.desktopOf(window.id()) == 1U && !x.clients().empty(); }));
        EXPECT_EQ(x.currentDesktop(), 0U);
        EXPECT_TRUE(waitUntil([&] { return takePicture(x).count(0xCC5500) == 0; }));

        ASSERT_TRUE(desktop.goToDesktop(1));
        EXPECT_TRUE(
            waitUntil([&] { return takePicture(x).count(0xCC5500) > frame.width * frame.height / 2; }));
        const auto place = x.geometry(window.id()).value();
        desktop.devices().click(place.x + 50, place.y + 60);
        EXPECT_TRUE(waitUntil([&] { return !window.buttonPresses().empty(); }));
        EXPECT_EQ(window.buttonPresses().front(), (ButtonPress{1, place.x + 50, place.y + 60}));

        const auto detached = desktop.run({"setsid", "--fork", "sleep", "600"});
        EXPECT_EQ(detached.status, 0) << detached.standardError;
    }
    EXPECT_TRUE(processesWithEnvironment(folder).empty());
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST_P(PrivateDesktopTest, SurvivesItsWindowManagersEndAndReplacement) {
    PrivateDesktop desktop({.windowManager = GetParam().windowManager});
    desktop.replaceWindowManager();
    EXPECT_TRUE(desktop.windowManager().isRunning());
    desktop.windowManager().signal(SIGKILL);
    ASSERT_TRUE(desktop.windowManager().wait());
    EXPECT_TRUE(waitUntil([&] { return !desktop.x().hasWindowManager(); }));
    desktop.startWindowManager();
    EXPECT_EQ(desktop.x().numberOfDesktops(), 3U);
}

TEST_P(PrivateDesktopTest, LosesNoneOfManyQuickClicks) {
    constexpr std::size_t kRounds = 30;
    PrivateDesktop desktop({.windowManager = GetParam().windowManager});
    auto& x = desktop.x();
    PlainWindow left(desktop.display(), {.title = "Left", .frame = {50, 100, 300, 200}});
    PlainWindow right(desktop.display(), {.title = "Right", .frame = {600, 100, 300, 200}});
    for (const auto* window : {&left, &right})
        ASSERT_TRUE(waitUntil([&] { return x.mapState(window->id()) == MapState::Viewable; }));
    auto hands = desktop.devices();
    for (std::size_t i = 0; i < kRounds; ++i) {
        hands.click(200, 200);
        hands.click(750, 200);
    }
    for (auto* window : {&left, &right})
        EXPECT_TRUE(waitUntil([&] { return window->buttonPresses().size() == kRounds; }));
}

INSTANTIATE_TEST_SUITE_P(
    WindowManagers, PrivateDesktopTest,
    testing::Values(
        DesktopCase{"Openbox", {.kind = WindowManager::Openbox, .desktops = 3}},
        DesktopCase{"OpenboxWithPicom", {.kind = WindowManager::Openbox, .desktops = 3, .composited = true}},
        DesktopCase{"Xfwm4", {.kind = WindowManager::Xfwm4, .desktops = 3}},
        DesktopCase{"Xfwm4Composited", {.kind = WindowManager::Xfwm4, .desktops = 3, .composited = true}},
        DesktopCase{"Kwin", {.kind = WindowManager::Kwin, .desktops = 3}},
        DesktopCase{"KwinComposited", {.kind = WindowManager::Kwin, .desktops = 3, .composited = true}}),
    [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
