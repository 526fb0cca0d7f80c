// Panels, the toast and alerts among the windows of a real desktop.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/desktop/InterfaceDesktop.h"
#include "tests/support/PlainWindow.h"
#include "tests/support/PrivateBus.h"

using namespace desktop_test;

namespace {

class PanelTest : public testing::TestWithParam<WindowManager> {
  protected:
    InterfaceDesktop desktop_{
        {.windowManager = {.kind = GetParam(), .composited = GetParam() == WindowManager::Kwin}}};
    XClient& x() { return desktop_.x(); }
};

TEST_P(PanelTest, ComeUpWhereTheUserIsAndGoWithAClickElsewhere) {
    PlainWindow below(desktop_.display(), {.frame = {40, 40, 300, 700}});
    ASSERT_TRUE(waitUntil([&] { return x().activeWindow() == below.id(); }));
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    desktop_.choose(menu_row::kAbout);
    ASSERT_TRUE(desktop_.hasKeyboard("About orvellos"));
    desktop_.choose(menu_row::kCurrentSpace);
    ASSERT_TRUE(desktop_.hasKeyboard("Tag This Space"));
    const auto panel = desktop_.shown("Tag This Space");
    const auto stack = x().stackedClients();
    EXPECT_GT(std::ranges::find(stack, panel), std::ranges::find(stack, below.id()));
    const auto place = x().geometry(panel).value();
    EXPECT_LE(std::abs(place.x + place.width / 2 - 640), 12);
    EXPECT_LE(std::abs(place.y + place.height / 2 - 400), 40);

    // A panel that is open already comes along to the Space it is asked for on.
    ASSERT_TRUE(desktop_.goToDesktop(2));
    desktop_.choose(menu_row::kAbout);
    ASSERT_TRUE(waitUntil([&] { return x().desktopOf(desktop_.shown("About orvellos")) == 2U; }));
    ASSERT_TRUE(desktop_.hasKeyboard("About orvellos"));
    desktop_.choose(menu_row::kCurrentSpace);
    ASSERT_TRUE(desktop_.hasKeyboard("Tag This Space"));
    desktop_.devices().click(place.x + 20, place.y + 20);
    desktop_.type("far");
    desktop_.press(XK_Return);
    ASSERT_TRUE(desktop_.waitForLabels({"far"})) << "a click in the panel itself leaves it open";
    ASSERT_TRUE(waitUntil([&] { return x().desktopOf(desktop_.window("far")) == 2U; }));

    // A click on a tag opens the list.
    ASSERT_TRUE(desktop_.pointAt("far"));
    const auto tag = x().geometry(desktop_.window("far")).value();
    desktop_.devices().click(tag.x + tag.width / 2, tag.y + tag.height / 2);
    ASSERT_TRUE(desktop_.hasKeyboard("Edit Tag"));
    desktop_.press(XK_Escape);
    ASSERT_TRUE(desktop_.isGone("Edit Tag"));
    ASSERT_TRUE(desktop_.goToDesktop(0));
    desktop_.choose(menu_row::kEditTags);
    ASSERT_TRUE(desktop_.hasKeyboard("Edit Tag"));
    desktop_.devices().click(60, 600);
    EXPECT_TRUE(desktop_.isGone("Edit Tag"));

    // Started once more, the program has the one that runs show itself.
    EXPECT_EQ(desktop_.run({desktop_.program("orvello")}).status, 0);
    ASSERT_TRUE(desktop_.hasKeyboard("About orvellos")) << "it was open on another Space";
    desktop_.press(XK_Escape);
    ASSERT_TRUE(desktop_.isGone("About orvellos"));
    EXPECT_EQ(desktop_.run({desktop_.program("orvello")}).status, 0);
    EXPECT_TRUE(desktop_.hasKeyboard("Edit Tag"));
}

TEST_P(PanelTest, AreMovedAndResizedByWhereverTheUserTakesHold) {
    desktop_.environment["ORVELLO_DEBUG"] = "1";
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    desktop_.choose(menu_row::kEditTags);
    ASSERT_TRUE(desktop_.hasKeyboard("Edit Tag"));
    const auto list = desktop_.shown("Edit Tag");
    const auto said = [&] { return desktop_.application().standardError().size(); };
    // Drags down from there until the list follows, and lets go.
    const auto follows = [&](int fromX, int fromY) {
        const auto before = x().geometry(list);
        const auto saidBefore = said();
        auto hands = desktop_.devices();
        hands.movePointer(fromX, fromY);
        hands.pressButton(XCB_BUTTON_INDEX_1);
        if (!waitUntil([&] { return said() > saidBefore; })) return false;
        int way = 0;
        const bool changed = waitUntil([&] {
            hands.movePointer(fromX, fromY + (way = way % 80 + 4));
            return x().geometry(list) != before;
        });
        hands.releaseButton(XCB_BUTTON_INDEX_1);
        return changed && waitUntil([&] { return x().isPointerFree(); });
    };
    const auto place = x().geometry(list).value();
    const auto frame = x().geometry(x().frameOf(list)).value();
    EXPECT_TRUE(follows(place.x + 150, (place.y + place.height + frame.y + frame.height) / 2))
        << "its border";
    EXPECT_TRUE(follows(place.x + 150, (place.y + frame.y) / 2)) << "its title bar";
    EXPECT_TRUE(follows(x().geometry(list)->x + 20, x().geometry(list)->y + 10)) << "its background";
}

TEST_P(PanelTest, TheToastIsOnEverySpaceAndNeverTakesTheKeyboard) {
    PlainWindow below(desktop_.display(), {.frame = {40, 40, 700, 740}, .color = 0xCCCCCC});
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    desktop_.choose(menu_row::kCurrentSpace);
    ASSERT_TRUE(desktop_.hasKeyboard("Tag This Space"));
    desktop_.type("mail");
    desktop_.press(XK_Return);
    ASSERT_TRUE(desktop_.waitForLabels({"mail"}));
    desktop_.devices().click(60, 600);
    ASSERT_TRUE(waitUntil([&] { return x().activeWindow() == below.id(); }));
    desktop_.choose(menu_row::kCurrentSpace);
    const char* const toast = "Deleted “mail”";
    ASSERT_TRUE(waitUntil([&] { return desktop_.shown(toast) != 0; }));
    EXPECT_EQ(x().activeWindow(), below.id());
    const auto place = desktop_.capsuleOf(toast);
    EXPECT_LE(std::abs(place.x + place.width / 2 - 640), 1);
    EXPECT_EQ(place.y + place.height, 800 - 48);
    const bool isComposited = GetParam() == WindowManager::Kwin;
    EXPECT_TRUE(waitUntil([&] {
        const auto picture = takePicture(x());
        const auto isGrey = [&](int pixelX, int pixelY) { return picture.at(pixelX, pixelY) == 0xCCCCCC; };
        return isGrey(640, 754) != isComposited && isGrey(640, 778) &&
               isGrey(place.x, place.y) != isComposited;
    })) << "a soft shadow, or a sharp silhouette";
    const auto keys = below.keyPresses().size();
    desktop_.type("abc");
    EXPECT_TRUE(waitUntil([&] { return below.keyPresses().size() == keys + 3; }));
    ASSERT_TRUE(desktop_.goToDesktop(1));
    EXPECT_TRUE(desktop_.shown(toast));
    EXPECT_TRUE(desktop_.isGone(toast)) << "after five seconds";
    EXPECT_TRUE(desktop_.storedTags().empty());
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, PanelTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4, WindowManager::Kwin),
                         [](const auto& tested) { return nameOf(tested.param); });

TEST(AlertTest, SaysThatASpaceIsGone) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox, .desktops = 4}});
    TaggedDesktop::write(desktop.dataFolder() / "orvello/tags.json",
                         {{{"id", "00000000-1111-4111-8111-111111111111"},
                           {"label", std::string(10'000, 'x')},
                           {"colorHex", "#3B82F6"},
                           {"spaceUUID", "GONE"}}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    desktop.choose(menu_row::kEditTags);
    ASSERT_TRUE(desktop.hasKeyboard("Edit Tag"));
    desktop.press(XK_Tab, 3);
    desktop.press(XK_space);
    ASSERT_TRUE(waitUntil([&] { return desktop.alert() != 0; }));
    EXPECT_LT(desktop.x().geometry(desktop.alert())->width, 600);
    EXPECT_EQ(desktop.x().desktopOf(desktop.alert()), kEveryDesktop)
        << "for it blocks the status button, too";
    desktop.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop.alert() == 0; }));
    EXPECT_TRUE(desktop.hasKeyboard("Edit Tag")) << "an alert is a panel too";
}

TEST(AlertTest, SaysThatNoUpdatesCanBeLookedFor) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    desktop.choose(menu_row::kCheckForUpdates);
    ASSERT_TRUE(waitUntil([&] { return desktop.alert() != 0; }));
    desktop.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop.alert() == 0; }));
}

TEST(AppearanceTest, FollowsTheDesktopsChoice) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}, .sessionBus = true});
    std::uint32_t scheme = 1;
    StandInService portal(
        desktop.environment.at("DBUS_SESSION_BUS_ADDRESS"), "org.freedesktop.portal.Desktop",
        [&](auto*, auto* reply) { return sd_bus_message_append(reply, "v", "v", "u", scheme); });
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    const auto buttonIs = [&](bool dark) {
        return waitUntil([&] {
            const auto place = desktop.x().geometry(desktop.statusButton()).value();
            const auto pixel = takePicture(desktop.x()).at(place.x + 3, place.y + 3);
            return ((pixel & 0xFF) < 0x80) == dark;
        });
    };
    EXPECT_TRUE(buttonIs(true));
    portal.run([](sd_bus* bus) {
        sd_bus_emit_signal(bus, "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                           "SettingChanged", "ssv", "org.freedesktop.appearance", "color-scheme", "u", 2U);
    });
    EXPECT_TRUE(buttonIs(false));
}

}  // namespace
