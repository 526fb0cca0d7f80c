// What the application knows of real overviews.

#include <gtest/gtest.h>

#include <csignal>

#include "platform/freedesktop/DesktopOverview.h"
#include "platform/freedesktop/KwinOverview.h"
#include "platform/x11/OverviewHints.h"
#include "platform/x11/X11Screens.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateDesktop.h"

using namespace desktop_test;

namespace {

// The application's own view of a private desktop.
struct Watcher {
    explicit Watcher(PrivateDesktop& watched) : desktop(watched) {}

    bool waitUntilOpen(bool open) {
        return mainLoop.runUntil([&] {
            const auto windows = overview.copyOnScreenWindows().value();
            return open ? windows.size() == 1 && windows.front().name == "appicon" : windows.empty();
        });
    }

    PrivateDesktop& desktop;
    MainLoop mainLoop;
    std::unique_ptr<platform::x11::XConnection> connection =
        platform::x11::XConnection::open(desktop.display().c_str(), kGenerousDeadline);
    platform::x11::XEvents events{*connection, mainLoop.runLoop, mainLoop.runLoop};
    platform::x11::X11Screens screens{*connection, events, mainLoop.runLoop, 1};
    platform::freedesktop::SystemdLibrary library;
    platform::freedesktop::SessionBus bus{library, mainLoop.runLoop, mainLoop.runLoop,
                                          [this] { return desktop.environment["DBUS_SESSION_BUS_ADDRESS"]; }};
    platform::freedesktop::KwinOverview kwin{bus, mainLoop.runLoop};
    platform::freedesktop::DesktopOverview overview{screens, {&kwin}};
    int hintCount = 0;
    platform::x11::OverviewHints hints{events, [this] {
                                           ++hintCount;
                                           kwin.overviewMayHaveChanged();
                                       }};
};

TEST(KwinOverviewTest, IsKnownWhileItIsOpen) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin, .composited = true}});
    Watcher watcher(desktop);
    const auto invoke = [&](const char* shortcut) {
        return desktop.bus().call("org.kde.kglobalaccel", "/component/kwin", "org.kde.kglobalaccel.Component",
                                  "invokeShortcut", shortcut);
    };
    ASSERT_TRUE(watcher.mainLoop.runUntil([&] { return watcher.kwin.openingCall().has_value(); }));
    EXPECT_TRUE(watcher.waitUntilOpen(false));
    for (const char* shortcut : {"Overview", "ShowDesktopGrid"}) {
        SCOPED_TRACE(shortcut);
        const int hintsBefore = watcher.hintCount;
        ASSERT_TRUE(invoke(shortcut));
        EXPECT_TRUE(watcher.waitUntilOpen(true));
        EXPECT_GT(watcher.hintCount, hintsBefore);
        ASSERT_TRUE(invoke(shortcut));
        EXPECT_TRUE(watcher.waitUntilOpen(false));
    }
    ASSERT_TRUE(invoke("Overview"));
    EXPECT_TRUE(watcher.waitUntilOpen(true));
    desktop.windowManager().signal(SIGKILL);
    EXPECT_TRUE(watcher.waitUntilOpen(false));
}

}  // namespace
