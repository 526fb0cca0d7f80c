#pragma once

#include "platform/Keys.h"
#include "platform/freedesktop/desktops/DesktopOverview.h"
#include "platform/freedesktop/desktops/KwinOverview.h"
#include "platform/freedesktop/desktops/OverviewLauncher.h"
#include "platform/freedesktop/desktops/ShellOverview.h"
#include "platform/freedesktop/desktops/SpaceKeys.h"
#include "platform/x11/overview/OverviewHints.h"
#include "platform/x11/overview/OverviewPrograms.h"

namespace programs {

// Whatever plays Mission Control's part on this desktop: who tells that it is open, and who opens it.
class OverviewServices {
  public:
    OverviewServices(platform::freedesktop::MessageBus& bus, platform::RunLoop& runLoop,
                     platform::x11::XConnection& connection, const platform::x11::Atoms& atoms,
                     platform::x11::XEvents& events, platform::Screens& screens, platform::KeyMonitor& keys,
                     platform::freedesktop::SpaceKeys& spaceKeys);

    [[nodiscard]] platform::freedesktop::DesktopOverview& windows() { return windows_; }
    [[nodiscard]] platform::ApplicationLauncher& launcher() { return launcher_; }
    [[nodiscard]] platform::freedesktop::KwinOverview& kwin() { return kwin_; }

  private:
    platform::freedesktop::KwinOverview kwin_;
    platform::freedesktop::ShellOverview gnomeShell_;
    platform::freedesktop::ShellOverview cinnamon_;
    platform::x11::OverviewPrograms programs_;
    platform::freedesktop::DesktopOverview windows_;
    platform::freedesktop::OverviewLauncher launcher_;
    platform::x11::OverviewHints hints_;
    platform::Subscription keyPresses_;
};

}  // namespace programs
