#pragma once

#include <cstdint>
#include <vector>

#include "platform/freedesktop/BusServiceWatch.h"
#include "platform/freedesktop/DesktopOverview.h"
#include "platform/freedesktop/KdeOverviewKeys.h"
#include "platform/freedesktop/KwinOverview.h"
#include "platform/freedesktop/OverviewLauncher.h"
#include "platform/freedesktop/ShellOverview.h"
#include "platform/x11/OverviewHints.h"
#include "platform/x11/OverviewPrograms.h"
#include "platform/x11/X11KeyMonitor.h"

// Whatever plays Mission Control's part on this desktop: who tells that it is open, and which keys open it.
class Overview {
  public:
    // What is passed outlives the overview. The key monitor is told the desktop's own keys.
    Overview(platform::freedesktop::SessionBus& bus, platform::RunLoop& runLoop,
             platform::x11::XConnection& connection, const platform::x11::Atoms& atoms,
             platform::x11::XEvents& events, const platform::Screens& screens,
             platform::x11::X11KeyMonitor& keys);

    [[nodiscard]] const platform::OnScreenWindows& windows() const { return windows_; }
    [[nodiscard]] platform::ApplicationLauncher& launcher() { return launcher_; }
    [[nodiscard]] platform::freedesktop::KwinOverview& kwin() { return kwin_; }

  private:
    void followKwin(bool isRunning);
    void askForKdeKeys();
    void useShortcuts();

    platform::RunLoop& runLoop_;
    platform::x11::X11KeyMonitor& keys_;
    platform::freedesktop::KwinOverview kwin_;
    platform::freedesktop::ShellOverview gnomeShell_;
    platform::freedesktop::ShellOverview cinnamon_;
    platform::x11::OverviewPrograms programs_;
    platform::freedesktop::DesktopOverview windows_;
    platform::freedesktop::OverviewLauncher launcher_;
    platform::x11::OverviewHints hints_;
    platform::freedesktop::KdeOverviewKeys kdeKeys_;
    std::vector<std::uint32_t> kdeQtKeys_;
    platform::Timer askLater_;
    platform::freedesktop::BusServiceWatch kwinRuns_;
    platform::freedesktop::BusServiceWatch gnomeShellRuns_;
    platform::Subscription keyPresses_;
};
