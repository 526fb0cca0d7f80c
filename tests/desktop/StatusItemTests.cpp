// The status item wherever a desktop has a place for it.

#include <gtest/gtest.h>

#include <csignal>
#include <future>

#include "tests/desktop/InterfaceDesktop.h"
#include "tests/support/PrivateBus.h"

using namespace desktop_test;

namespace {

// A watcher with a host. Clients look up its properties in what it says of itself.
class Watcher {
  public:
    explicit Watcher(const std::string& bus)
        : service_(bus, "org.kde.StatusNotifierWatcher",
                   [this](auto* call, auto* reply) { return answer(call, reply); }) {}

    // The connection of the first item that registers; empty when none does.
    std::string waitForItem() {
        auto item = item_.get_future();
        return item.wait_for(kGenerousDeadline) == std::future_status::ready ? item.get() : std::string();
    }

  private:
    int answer(sd_bus_message* call, sd_bus_message* reply) {
        const std::string_view member = sd_bus_message_get_member(call);
        if (member == "RegisterStatusNotifierItem" && !std::exchange(hasItem_, true))
            item_.set_value(sd_bus_message_get_sender(call));
        if (member == "Get") return sd_bus_message_append(reply, "v", "b", 1);
        if (member != "Introspect") return 0;
        return sd_bus_message_append(reply, "s", R"(<node><interface name="org.kde.StatusNotifierWatcher">
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
</interface></node>)");
    }

    std::promise<std::string> item_;
    bool hasItem_ = false;
    StandInService service_;
};

TEST(StatusItemTest, TheMenuOfSixtySpacesFitsOnTheScreenAndScrolls) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox, .desktops = 60}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
    const auto place = desktop.x().geometry(desktop.menu()).value();
    EXPECT_GE(place.y, 0);
    EXPECT_LE(place.y + place.height, 800);
    EXPECT_LE(place.x + place.width, 1280);
    desktop.press(XK_Up, 10);
    desktop.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop.x().currentDesktop() == 59U; }));
}

TEST(StatusItemTest, SurvivesASpaceThatIsClosedWhileItsRowIsOpen) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
    desktop.x().setNumberOfDesktops(3);
    ASSERT_TRUE(waitUntil([&] { return desktop.x().numberOfDesktops() == 3U; }));
    desktop.press(XK_Down, menu_row::kFirstDesktop + 3);
    desktop.press(XK_Return);
    ASSERT_TRUE(waitUntil([&] { return desktop.alert() != 0; }));
    desktop.press(XK_Escape);
    EXPECT_EQ(desktop.x().currentDesktop(), 0U);
    EXPECT_TRUE(desktop.application().isRunning());
}

TEST(StatusItemTest, ShowsTheTagsLabelWhileTagsAreHidden) {
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
    desktop.devices().movePointer(bare.x + 4, bare.y + 4);
    EXPECT_TRUE(waitUntil([&] { return desktop.windowOfType("TOOLTIP") != 0; }));
}

TEST(StatusItemTest, MovesAsATrayComesAndGoes) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    const auto isInTray = [&] {
        const auto item = desktop.statusButton();
        const auto place = desktop.x().geometry(item);
        return place && place->y > 700 && desktop.x().frameOf(item) != item && !desktop.x().desktopOf(item);
    };
    EXPECT_FALSE(isInTray());
    std::optional<Process> tray(
        desktop.start({"tint2", "-c", "/usr/share/tint2/horizontal-dark-opaque.tint2rc"}));
    ASSERT_TRUE(waitUntil(isInTray)) << tray->standardError();
    const auto place = desktop.x().geometry(desktop.statusButton()).value();
    desktop.devices().click(place.x + place.width / 2, place.y + place.height / 2);
    ASSERT_NO_FATAL_FAILURE(desktop.enterMenu());
    desktop.press(XK_Down, menu_row::kFirstDesktop + 1);
    desktop.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop.x().currentDesktop() == 1U; }));
    tray.reset();
    EXPECT_TRUE(waitUntil([&] { return desktop.statusButton() && !isInTray(); })) << "back on the screen";
}

TEST(StatusItemTest, ComesUpThoughTheWindowManagerThatWasAskedIsGone) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    desktop.windowManager().signal(SIGSTOP);
    const auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(waitUntil([&] { return desktop.x().findByTitle("orvellos").has_value(); }));
    EXPECT_EQ(desktop.statusButton(), 0U);
    desktop.windowManager().signal(SIGKILL);
    desktop.startWindowManager();
    EXPECT_TRUE(waitUntil([&] { return desktop.x().desktopOf(desktop.statusButton()) == kEveryDesktop; }));
}

TEST(StatusItemTest, IsANotifierItemWhileAHostShowsThose) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}, .sessionBus = true});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    std::optional<Watcher> watcher;
    watcher.emplace(desktop.environment.at("DBUS_SESSION_BUS_ADDRESS"));
    const auto item = watcher->waitForItem();
    ASSERT_FALSE(item.empty());
    EXPECT_TRUE(waitUntil([&] { return desktop.statusButton() == 0; }));
    desktop.devices().movePointer(200, 200);
    ASSERT_GE(sd_bus_call_method(desktop.bus().connection(), item.c_str(), "/StatusNotifierItem",
                                 "org.kde.StatusNotifierItem", "ContextMenu", nullptr, nullptr, "ii", 0, 0),
              0);
    ASSERT_NO_FATAL_FAILURE(desktop.enterMenu());
    desktop.press(XK_Down, menu_row::kFirstDesktop + 1);
    desktop.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop.x().currentDesktop() == 1U; }));
    watcher.reset();
    EXPECT_TRUE(waitUntil([&] { return desktop.statusButton() != 0; })) << "back on the screen";
}

}  // namespace
