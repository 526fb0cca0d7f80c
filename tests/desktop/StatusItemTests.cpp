// The status item wherever a desktop has a place for it.

#include <gtest/gtest.h>

#include <mutex>

#include "tests/desktop/InterfaceDesktop.h"
#include "tests/support/PrivateBus.h"

using namespace desktop_test;

namespace {

TEST(StatusItemTest, TheMenuOfSixtySpacesFitsOnTheScreenAndScrolls) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox, .desktops = 60}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
    const auto place = desktop.x().geometry(desktop.menu()).value();
    EXPECT_GE(place.y, 0);
    EXPECT_LE(place.y + place.height, 800);
    EXPECT_LE(place.x + place.width, 1280);
    desktop.press(XK_Up, 9);
    desktop.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop.x().currentDesktop() == 59U; }));
}

TEST(StatusItemTest, SurvivesASpaceThatIsClosedWhileItsRowIsOpen) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
    desktop.x().setNumberOfDesktops(3);
    ASSERT_TRUE(waitUntil([&] { return desktop.x().numberOfDesktops() == 3U; }));
    desktop.press(XK_Down, menu_row::kFirstDesktop + 3 + 1);
    desktop.press(XK_Return);
    ASSERT_TRUE(waitUntil([&] {
        const auto active = desktop.x().activeWindow();
        return active && desktop.x().text(*active, "_NET_WM_NAME") == "orvellos";
    })) << "the alert";
    desktop.press(XK_Escape);
    EXPECT_EQ(desktop.x().currentDesktop(), 0U);
    EXPECT_TRUE(desktop.application().isRunning());
}

TEST(StatusItemTest, GrowsByTheTagsLabelWhileTagsAreHidden) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    desktop.choose(menu_row::kCurrentSpace);
    ASSERT_TRUE(desktop.hasKeyboard("Tag This Space"));
    desktop.type("mail");
    desktop.press(XK_Return);
    ASSERT_TRUE(desktop.waitForLabels({"mail"}));
    const auto bare = desktop.x().geometry(desktop.statusButton()).value();
    desktop.choose(menu_row::kHideDuringWork);
    EXPECT_TRUE(waitUntil([&] {
        const auto now = desktop.x().geometry(desktop.statusButton()).value();
        return now.width > bare.width + 30 && now.x + now.width == bare.x + bare.width;
    }));
}

// A watcher of status notifier items, with a host.
class Watcher {
  public:
    explicit Watcher(const std::string& address)
        : service_(address, "org.kde.StatusNotifierWatcher", [this](auto* call, auto* reply) {
              if (std::string_view(sd_bus_message_get_member(call)) == "RegisterStatusNotifierItem") {
                  const std::lock_guard lock(mutex_);
                  item_ = sd_bus_message_get_sender(call);
                  return 1;
              }
              return sd_bus_message_append(reply, "v", "b", 1);
          }) {}

    // Who has registered an item; empty before one has.
    std::string item() {
        const std::lock_guard lock(mutex_);
        return item_;
    }

  private:
    std::mutex mutex_;
    std::string item_;
    StandInService service_;
};

TEST(StatusItemTest, MovesAsHostsComeAndGo) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}, .sessionBus = true});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    const auto isInTray = [&] {
        const auto item = desktop.statusButton();
        return item && desktop.x().frameOf(item) != item && !desktop.x().desktopOf(item);
    };
    EXPECT_FALSE(isInTray());
    std::optional<Process> tray(
        desktop.start({"tint2", "-c", "/usr/share/tint2/horizontal-dark-opaque.tint2rc"}));
    ASSERT_TRUE(waitUntil(isInTray)) << tray->standardError();
    ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
    desktop.press(XK_Escape);
    ASSERT_TRUE(waitUntil([&] { return desktop.menu() == 0; }));
    {
        Watcher watcher(desktop.environment.at("DBUS_SESSION_BUS_ADDRESS"));
        ASSERT_TRUE(waitUntil([&] { return !watcher.item().empty(); }));
        EXPECT_TRUE(desktop.isGone("orvellos")) << "there is one item, not two";
        sd_bus_call_method(desktop.bus().connection(), watcher.item().c_str(), "/StatusNotifierItem",
                           "org.kde.StatusNotifierItem", "ContextMenu", nullptr, nullptr, "ii", 5, 5);
        ASSERT_TRUE(waitUntil([&] { return desktop.menu() != 0; }));
        desktop.press(XK_Escape);
    }
    EXPECT_TRUE(waitUntil(isInTray)) << "back in the tray";
    tray.reset();
    EXPECT_TRUE(waitUntil([&] { return desktop.statusButton() && !isInTray(); })) << "back on the screen";
}

}  // namespace
