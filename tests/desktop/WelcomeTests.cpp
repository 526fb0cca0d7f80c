// The first run, and starting anew from the settings, with real window managers.

#include <gtest/gtest.h>

#include "tests/desktop/InterfaceDesktop.h"

using namespace desktop_test;

namespace {

class WelcomeTest : public testing::TestWithParam<WindowManager> {
  protected:
    InterfaceDesktop desktop_{{.windowManager = {.kind = GetParam(), .desktops = 4}}};
};

TEST_P(WelcomeTest, LeadsToAFirstTagAndIsSeenOnce) {
    desktop_.removeSettings();
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplicationAnew());
    ASSERT_TRUE(desktop_.hasKeyboard("Welcome to orvellos"));
    desktop_.press(XK_Escape);
    ASSERT_TRUE(desktop_.isGone("Welcome to orvellos"));
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplicationAnew());
    ASSERT_TRUE(desktop_.hasKeyboard("Welcome to orvellos")) << "it was closed, not finished";
    desktop_.press(XK_Return, 2);
    ASSERT_TRUE(desktop_.hasKeyboard("Tag This Space"));
    EXPECT_TRUE(desktop_.isGone("Welcome to orvellos"));
    desktop_.type("mail");
    desktop_.press(XK_Return);
    ASSERT_TRUE(desktop_.waitForLabels({"mail"}));
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplicationAnew());
    EXPECT_TRUE(waitUntil([&] { return desktop_.window("mail") != 0; }));
    EXPECT_EQ(desktop_.shown("Welcome to orvellos"), 0U);
    EXPECT_EQ(desktop_.shown("Tag This Space"), 0U);
}

TEST_P(WelcomeTest, TheSettingsStartTheApplicationAnew) {
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    const auto processOf = [&] { return desktop_.x().cardinal(desktop_.statusButton(), "_NET_WM_PID"); };
    const auto first = processOf();
    ASSERT_NO_FATAL_FAILURE(desktop_.choose(menu_row::kSettings));
    ASSERT_TRUE(desktop_.hasKeyboard("orvellos Settings"));
    auto hands = desktop_.devices();
    hands.typeKeys({hands.keyFor(XK_Shift_L), hands.keyFor(XK_Tab)});  // the last of the buttons: reset
    for (const auto answer : {XK_Escape, XK_Return}) {
        desktop_.press(XK_space);
        ASSERT_TRUE(waitUntil([&] { return desktop_.alert() != 0; }));
        EXPECT_EQ(processOf(), first);
        desktop_.press(answer);
        if (answer == XK_Escape) {
            ASSERT_TRUE(desktop_.hasKeyboard("orvellos Settings"));
        }
    }
    EXPECT_EQ(desktop_.application().wait(), 0);
    EXPECT_TRUE(waitUntil([&] { return processOf() && processOf() != first; }));
}

// The window manager does not say that it changes desktops, and then its successor does.
TEST_P(WelcomeTest, PermissionsTurnGreenByThemselves) {
    constexpr Rgb kGranted = 0x249D42;
    constexpr int kOneRow = 60;  // pixels of its symbol, at least
    desktop_.removeSettings();
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplicationAnew());
    ASSERT_TRUE(desktop_.hasKeyboard("Welcome to orvellos"));
    desktop_.press(XK_Return);
    const auto place = desktop_.x().geometry(desktop_.shown("Welcome to orvellos")).value();
    const auto comesToShow = [&](int rows) {
        return waitUntil([&] {
            const int green = takePicture(desktop_.x(), place).count(kGranted);
            return green >= rows * kOneRow && (rows == 2 || green < 2 * kOneRow);
        });
    };
    ASSERT_TRUE(comesToShow(2)) << "here both are granted";
    auto& x = desktop_.x();
    const auto states = x.atoms(desktop_.shown("Welcome to orvellos"), "_NET_WM_STATE");
    EXPECT_EQ(std::ranges::count(states, "_NET_WM_STATE_ABOVE"), 1) << "as every panel";
    xcb_delete_property(x.connection(), x.root(), x.atom("_NET_SUPPORTED"));
    x.synchronize();
    EXPECT_TRUE(comesToShow(1));
    desktop_.replaceWindowManager();
    EXPECT_TRUE(comesToShow(2));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, WelcomeTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4, WindowManager::Kwin),
                         [](const auto& tested) { return nameOf(tested.param); });

}  // namespace
