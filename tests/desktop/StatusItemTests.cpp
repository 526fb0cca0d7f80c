// The status item wherever a desktop has a place for it.

#include <fmt/format.h>
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

// A system tray that has taken over from the one before, and takes in the icons of programs or does not.
class StandInTray {
  public:
    enum class Takes { Icons, Nothing };
    StandInTray(const std::string& display, Takes takes) : client_(display), takes_(takes) {
        const auto& screen = client_.screen();
        window_ = xcb_generate_id(client_.connection());
        xcb_create_window(client_.connection(), XCB_COPY_FROM_PARENT, window_, screen.root, 300, 300, 60, 40,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(client_.connection(), window_);
        xcb_set_selection_owner(client_.connection(), window_, client_.atom("_NET_SYSTEM_TRAY_S0"),
                                XCB_CURRENT_TIME);
        client_.synchronize();
    }

    // The icon that it has taken in; 0 while there is none.
    xcb_window_t icon() {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(client_.connection())}) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if (typeOf(*event) != XCB_CLIENT_MESSAGE || takes_ == Takes::Nothing) continue;
            icon_ = message.data.data32[2];
            xcb_reparent_window(client_.connection(), icon_, window_, 4, 4);
            xcb_map_window(client_.connection(), icon_);
        }
        client_.synchronize();
        return icon_;
    }

  private:
    XClient client_;
    Takes takes_;
    xcb_window_t window_ = 0;
    xcb_window_t icon_ = 0;
};

void tagTheSpace(InterfaceDesktop& desktop, const std::string& label) {
    desktop.choose(menu_row::kCurrentSpace);
    ASSERT_TRUE(desktop.hasKeyboard("Tag This Space"));
    desktop.type(label);
    desktop.press(XK_Return);
    ASSERT_TRUE(desktop.waitForLabels({label}));
}

Rgb colorOf(const InterfaceDesktop& desktop, const std::string& label) {
    const std::string hex = desktop.storedTag(label).at("colorHex");
    return static_cast<Rgb>(std::stoul(hex.substr(1), nullptr, 16));
}

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
    desktop.environment["ORVELLO_DEBUG"] = "1";
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
    const auto lastChange = [&] {
        return desktop.application().standardError().rfind("onActiveSpaceChanged FIRED");
    };
    const auto before = lastChange();
    desktop.x().setNumberOfDesktops(3);
    ASSERT_TRUE(waitUntil([&] { return lastChange() != before; })) << "the application knows";
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
    ASSERT_NO_FATAL_FAILURE(tagTheSpace(desktop, "mail"));
    const auto bare = desktop.x().geometry(desktop.statusButton()).value();
    desktop.choose(menu_row::kHideDuringWork);
    EXPECT_TRUE(waitUntil([&] {
        const auto now = desktop.x().geometry(desktop.statusButton()).value();
        return now.width > bare.width + 30 && now.x + now.width == bare.x + bare.width;
    }));
    desktop.devices().movePointer(bare.x + 4, bare.y + 4);
    EXPECT_TRUE(waitUntil([&] { return desktop.windowOfType("TOOLTIP") != 0; }));
}

TEST(StatusItemTest, TheButtonIsAwayFromTitleBarsAndStaysWhereItIsDragged) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    const auto place = [&] { return desktop.x().geometry(desktop.statusButton()).value(); };
    const auto first = place();
    EXPECT_EQ(first, (Rectangle{1280 - 6 - first.width, 800 - 6 - first.height, first.width, first.height}));
    desktop.devices().drag(first.x + 10, first.y + 10, 310, 210);
    const Rectangle dragged{300, 200, first.width, first.height};
    EXPECT_TRUE(waitUntil([&] { return place() == dragged; })) << place().x << ", " << place().y;
    EXPECT_EQ(desktop.menu(), 0U);
    ASSERT_TRUE(waitUntil([&] {
        std::ifstream file(desktop.settingsFile());
        return nlohmann::json::parse(file, nullptr, false).contains("statusButtonCorner");
    }));
    ASSERT_NO_FATAL_FAILURE(desktop.startApplicationAnew());
    EXPECT_TRUE(waitUntil([&] { return place() == dragged; }));
    EXPECT_NO_FATAL_FAILURE(desktop.openMenu());
}

TEST(StatusItemTest, MovesAsATrayComesAndGoes) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    ASSERT_NO_FATAL_FAILURE(tagTheSpace(desktop, "mail"));
    desktop.choose(menu_row::kHideDuringWork);
    const auto color = colorOf(desktop, "mail");
    const auto isInTray = [&] {
        const auto item = desktop.statusButton();
        const auto place = desktop.x().geometry(item);
        return place && place->y > 700 && desktop.x().frameOf(item) != item && !desktop.x().desktopOf(item) &&
               takePicture(desktop.x(), *place).count(color) > 60;
    };
    EXPECT_FALSE(isInTray());
    for (const std::vector<std::string>& command : {
             std::vector<std::string>{"tint2", "-c", "/etc/xdg/tint2/tint2rc"},
             {"trayer", "--edge", "bottom", "--height", "24"},
         }) {
        SCOPED_TRACE(command.front());
        std::optional<Process> tray(desktop.start(command));
        ASSERT_TRUE(waitUntil(isInTray)) << tray->standardError();
        tray.reset();
        tray.emplace(desktop.start(command));
        ASSERT_TRUE(waitUntil(isInTray)) << "after a restart of the tray";
        ASSERT_NO_FATAL_FAILURE(desktop.openMenu());
        desktop.press(XK_Escape);
        ASSERT_TRUE(waitUntil([&] { return desktop.menu() == 0; }));
        tray.reset();
        EXPECT_TRUE(waitUntil([&] { return desktop.x().desktopOf(desktop.statusButton()) == kEveryDesktop; }))
            << "back on the screen";
    }
}

TEST(StatusItemTest, IsNeverLostWhateverTrayTakesOver) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    StandInTray deaf(desktop.display(), StandInTray::Takes::Nothing);
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    EXPECT_NO_FATAL_FAILURE(desktop.openMenu());
    desktop.press(XK_Escape);
    const auto button = desktop.statusButton();
    StandInTray tray(desktop.display(), StandInTray::Takes::Icons);
    ASSERT_TRUE(waitUntil([&] { return tray.icon() != 0; }));
    EXPECT_TRUE(waitUntil([&] { return desktop.x().mapState(button) != MapState::Viewable; }));
    StandInTray next(desktop.display(), StandInTray::Takes::Icons);
    EXPECT_TRUE(waitUntil([&] { return next.icon() != 0 && desktop.statusButton() == next.icon(); }));
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
    ASSERT_NO_FATAL_FAILURE(tagTheSpace(desktop, "mail"));
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
    desktop.press(XK_Down, menu_row::kHideDuringWork);
    desktop.press(XK_Return);
    const auto shows = [&](const std::string& property, const std::string& text) {
        return waitUntil([&] {
            const auto answer = desktop.run({"dbus-send", "--print-reply", "--dest=" + item,
                                             "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get",
                                             "string:org.kde.StatusNotifierItem", "string:" + property});
            return answer.standardOutput.find(text) != std::string::npos;
        });
    };
    const auto color = colorOf(desktop, "mail");
    EXPECT_TRUE(shows("IconPixmap", fmt::format("ff {:02x} {:02x} {:02x}", color >> 16U,
                                                (color >> 8U) & 0xFFU, color & 0xFFU)))
        << "the tag's colour";
    EXPECT_TRUE(shows("ToolTip", "orvellos — mail"));
    watcher.reset();
    EXPECT_TRUE(waitUntil([&] { return desktop.statusButton() != 0; })) << "back on the screen";
}

}  // namespace
