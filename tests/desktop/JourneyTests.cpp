// What a newcomer does in their first minutes, by mouse and keys alone.

#include <gtest/gtest.h>

#include "tests/desktop/InterfaceDesktop.h"

using namespace desktop_test;

namespace {

class JourneyTest : public testing::TestWithParam<WindowManager> {};

void tagThisSpace(InterfaceDesktop& desktop, const char* label) {
    desktop.choose(menu_row::kCurrentSpace);
    ASSERT_TRUE(desktop.hasKeyboard("Tag This Space"));
    desktop.type(label);
    desktop.press(XK_Return);
    ASSERT_TRUE(desktop.isGone("Tag This Space"));
}

void jumpTo(InterfaceDesktop& desktop, std::uint32_t space) {
    desktop.choose(menu_row::kFirstDesktop + static_cast<int>(space));
    ASSERT_TRUE(waitUntil([&] { return desktop.x().currentDesktop() == space; }));
}

void openList(InterfaceDesktop& desktop) {
    desktop.choose(menu_row::kEditTags);
    ASSERT_TRUE(desktop.hasKeyboard("Edit Tag"));
}

void clickUndo(InterfaceDesktop& desktop, const char* toast) {
    ASSERT_TRUE(waitUntil([&] { return desktop.shown(toast) != 0; }));
    const auto place = desktop.capsuleOf(toast);
    desktop.devices().click(place.x + place.width - 30, place.y + place.height / 2);
}

void dragWithShift(InterfaceDesktop& desktop, const char* label) {
    ASSERT_TRUE(desktop.pointAt(label));
    const auto place = desktop.x().geometry(desktop.window(label)).value();
    auto hands = desktop.devices();
    const int centerX = place.x + place.width / 2;
    const int centerY = place.y + place.height / 2;
    hands.pressKey(hands.keyFor(XK_Shift_L));
    hands.drag(centerX, centerY, centerX - 300, centerY + 250);
    hands.releaseKey(hands.keyFor(XK_Shift_L));
    ASSERT_TRUE(waitUntil([&] { return desktop.storedTag(label).contains("frame"); }));
}

TEST_P(JourneyTest, TagsJumpsRenamesDeletesUndoesMovesAndRelinks) {
    InterfaceDesktop desktop(
        {.windowManager = {.kind = GetParam(), .composited = GetParam() == WindowManager::Kwin}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(tagThisSpace(desktop, "mail"));
    ASSERT_NO_FATAL_FAILURE(jumpTo(desktop, 2));
    ASSERT_NO_FATAL_FAILURE(tagThisSpace(desktop, "code"));
    ASSERT_TRUE(desktop.waitForLabels({"mail", "code"}));
    ASSERT_NO_FATAL_FAILURE(jumpTo(desktop, 0));

    ASSERT_NO_FATAL_FAILURE(openList(desktop));
    desktop.press(XK_Tab, 2);
    desktop.press(XK_Return);
    desktop.type("post");
    desktop.press(XK_Return);
    ASSERT_TRUE(desktop.waitForLabels({"post", "code"}));
    desktop.press(XK_Tab, 3);
    desktop.press(XK_space);
    ASSERT_TRUE(desktop.waitForLabels({"code"}));
    ASSERT_NO_FATAL_FAILURE(clickUndo(desktop, "Deleted “post”"));
    ASSERT_TRUE(desktop.waitForLabels({"post", "code"}));
    desktop.press(XK_Escape);
    ASSERT_TRUE(desktop.isGone("Edit Tag"));

    ASSERT_NO_FATAL_FAILURE(dragWithShift(desktop, "post"));
    ASSERT_NO_FATAL_FAILURE(openList(desktop));
    desktop.press(XK_Tab, 4);
    desktop.press(XK_space);
    ASSERT_NO_FATAL_FAILURE(desktop.enterMenu());
    desktop.press(XK_Down, 2);
    desktop.press(XK_Return);
    ASSERT_TRUE(waitUntil([&] { return !desktop.storedTag("post").contains("frame"); }));
    desktop.press(XK_Escape);
    ASSERT_TRUE(desktop.isGone("Edit Tag"));

    const auto stored = desktop.storedTags();
    desktop.choose(menu_row::kQuit);
    EXPECT_EQ(desktop.application().wait(), 0) << desktop.application().standardError();
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_TRUE(waitUntil([&] { return desktop.window("post") && desktop.window("code"); }));
    EXPECT_EQ(desktop.storedTags(), stored);
    EXPECT_TRUE(waitUntil([&] { return desktop.x().desktopOf(desktop.window("post")) == 0U; }));
    EXPECT_TRUE(waitUntil([&] { return desktop.x().desktopOf(desktop.window("code")) == 2U; }));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, JourneyTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4, WindowManager::Kwin),
                         [](const auto& tested) { return nameOf(tested.param); });

}  // namespace
