// Real overviews, as the application sees them.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>

#include "platform/freedesktop/desktops/DesktopOverview.h"
#include "platform/freedesktop/desktops/KwinOverview.h"
#include "platform/freedesktop/desktops/OverviewLauncher.h"
#include "platform/x11/connection/Extensions.h"
#include "platform/x11/overview/OverviewHints.h"
#include "platform/x11/overview/OverviewPrograms.h"
#include "platform/x11/screens/X11Screens.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateDesktop.h"

using namespace desktop_test;

namespace {

// The application's own view of a private desktop.
struct Watcher {
    explicit Watcher(PrivateDesktop& watched) : desktop(watched) {}

    bool waitUntilOpen(bool open) {
        return mainLoop.runUntil([&] { return isOpen() == open; });
    }
    bool isOpen() {
        const auto windows = overview.copyOnScreenWindows().value();
        return windows.size() == 1 && windows.front().name == "appicon";
    }
    // Returns when the events of everything that the desktop's client has done are handled.
    bool handleEvents() {
        auto& x = desktop.x();
        bool handled = false;
        const auto mark = x.atom("TEST_MARK");
        const auto subscription = events.subscribe([&](const auto& event) {
            handled = handled || (platform::x11::XEvents::type(event) == XCB_PROPERTY_NOTIFY &&
                                  reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == mark);
        });
        x.removeProperty(x.root(), "TEST_MARK");
        x.setCardinals(x.root(), "TEST_MARK", std::array{1U});
        x.synchronize();
        return mainLoop.runUntil([&] { return handled; });
    }

    PrivateDesktop& desktop;
    MainLoop mainLoop;
    std::unique_ptr<platform::x11::XConnection> connection =
        platform::x11::openWithExtensions(desktop.display().c_str(), kGenerousDeadline);
    platform::x11::XEvents events{*connection, mainLoop.runLoop, mainLoop.runLoop};
    platform::freedesktop::SystemdLibrary library;
    platform::freedesktop::MessageBus bus{library, mainLoop.runLoop, mainLoop.runLoop,
                                          [this] { return desktop.environment["DBUS_SESSION_BUS_ADDRESS"]; }};
    platform::freedesktop::KwinOverview kwin{bus, mainLoop.runLoop};
    platform::x11::Atoms atoms = platform::x11::Atoms::intern(*connection);
    platform::x11::X11Screens screens{*connection, atoms, events, mainLoop.runLoop, 1};
    platform::x11::OverviewPrograms programs{*connection, atoms, events, mainLoop.runLoop, screens, true};
    platform::freedesktop::DesktopOverview overview{{&kwin, &programs}};
    int hintCount = 0;
    platform::x11::OverviewHints hints{events, [this] {
                                           ++hintCount;
                                           kwin.overviewMayHaveChanged();
                                       }};
};

TEST(KwinOverviewTest, IsKnownWhileItIsOpen) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin, .composited = true}});
    Watcher watcher(desktop);
    ASSERT_TRUE(watcher.mainLoop.runUntil([&] { return watcher.kwin.openingCall().has_value(); }));
    EXPECT_TRUE(watcher.waitUntilOpen(false));
    for (const char* shortcut : {"Overview", "ShowDesktopGrid"}) {
        SCOPED_TRACE(shortcut);
        const int hintsBefore = watcher.hintCount;
        ASSERT_TRUE(desktop.toggleOverview(shortcut));
        EXPECT_TRUE(watcher.waitUntilOpen(true));
        EXPECT_GT(watcher.hintCount, hintsBefore);
        ASSERT_TRUE(desktop.toggleOverview(shortcut));
        EXPECT_TRUE(watcher.waitUntilOpen(false));
    }
    platform::freedesktop::OverviewLauncher launcher(watcher.bus, watcher.mainLoop.runLoop, {&watcher.kwin},
                                                     {});
    std::optional<std::string> error = "not opened yet";
    launcher.open(launcher.urlForApplication("com.apple.exposelauncher").value(),
                  [&](const auto& problem) { error = problem; });
    EXPECT_TRUE(watcher.waitUntilOpen(true));
    EXPECT_TRUE(watcher.mainLoop.runUntil([&] { return !error; }));
    desktop.windowManager().signal(SIGKILL);
    EXPECT_TRUE(watcher.waitUntilOpen(false));
}

constexpr Rectangle kWholeScreen{0, 0, 1280, 800};

// A window manager forgets a window's state after the window is unmapped.
void show(XClient& x, xcb_window_t window, bool fullScreen) {
    const std::array state{x.atom("_NET_WM_STATE_FULLSCREEN")};
    EXPECT_TRUE(waitUntil([&] { return x.atoms(window, "_NET_WM_STATE").empty(); }));
    if (fullScreen)
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, window, x.atom("_NET_WM_STATE"),
                            XCB_ATOM_ATOM, 32, state.size(), state.data());
    xcb_map_window(x.connection(), window);
    x.synchronize();
}

// A window of another program with this class (instance and class, each ended by a zero).
xcb_window_t makeWindow(XClient& x, std::string_view windowClass, const Rectangle& frame, bool isManaged) {
    auto* connection = x.connection();
    const auto window = xcb_generate_id(connection);
    const std::uint32_t overrideRedirect = !isManaged;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, x.root(), 0, 0,
                      static_cast<std::uint16_t>(frame.width), static_cast<std::uint16_t>(frame.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &overrideRedirect);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(windowClass.size()), windowClass.data());
    show(x, window, frame == kWholeScreen);
    EXPECT_TRUE(waitUntil([&] { return !isManaged || std::ranges::count(x.clients(), window) == 1; }));
    return window;
}

constexpr std::string_view kSkippy("skippy-xd\0Skippy-xd\0", 20);

TEST(OverviewProgramsTest, AreKnownByTheirFullScreenWindows) {
    struct Case {
        const char* name;
        std::string_view windowClass;
        Rectangle frame;
        bool isManaged;
        bool isOverview;
    };
    const Case cases[] = {
        {"managed", {"main\0Xfdashboard\0", 17}, kWholeScreen, true, true},
        {"unmanaged", kSkippy, kWholeScreen, false, true},
        {"too small", kSkippy, {0, 0, 1280, 700}, false, false},
        {"another program", {"xfdashboard\0Xterm\0", 18}, kWholeScreen, false, false},
        {"no class beside the instance", "skippy-xd", kWholeScreen, false, false},
        {"no class at all", "", kWholeScreen, true, false},
    };
    PrivateDesktop desktop;
    auto& x = desktop.x();
    Watcher watcher(desktop);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto window = makeWindow(x, c.windowClass, c.frame, c.isManaged);
        // When this window is known the application has looked at the other's class, too.
        const auto later = makeWindow(x, kSkippy, kWholeScreen, false);
        EXPECT_TRUE(watcher.waitUntilOpen(true));
        xcb_destroy_window(x.connection(), later);
        EXPECT_TRUE(watcher.handleEvents());
        EXPECT_EQ(c.isOverview ? watcher.waitUntilOpen(true) : watcher.isOpen(), c.isOverview);
        xcb_destroy_window(x.connection(), window);
        x.synchronize();
        EXPECT_TRUE(watcher.waitUntilOpen(false));
    }
}

TEST(OverviewProgramsTest, AreFollowedFromTheStart) {
    PrivateDesktop desktop;
    auto& x = desktop.x();
    auto* connection = x.connection();
    const auto window = makeWindow(x, kSkippy, kWholeScreen, true);
    Watcher watcher(desktop);
    EXPECT_TRUE(watcher.waitUntilOpen(true));
    struct Step {
        const char* name;
        std::function<void()> action;
        bool isOpen;
    };
    const auto setFullScreen = [&](std::uint32_t action) {
        x.sendToRoot(window, "_NET_WM_STATE", std::array{action, x.atom("_NET_WM_STATE_FULLSCREEN"), 0U, 1U});
    };
    const Step steps[] = {{"unmap", [&] { xcb_unmap_window(connection, window); }, false},
                          {"map", [&] { show(x, window, true); }, true},
                          {"leave full screen", [&] { setFullScreen(0); }, false},
                          {"enter full screen", [&] { setFullScreen(1); }, true},
                          {"destroy", [&] { xcb_destroy_window(connection, window); }, false}};
    for (const auto& step : steps) {
        step.action();
        x.synchronize();
        EXPECT_TRUE(watcher.waitUntilOpen(step.isOpen)) << step.name;
    }
}

}  // namespace
