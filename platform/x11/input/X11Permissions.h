#pragma once

#include <functional>
#include <utility>

#include "platform/Session.h"
#include "platform/x11/input/RawInput.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// Tells what X11 lets the application do, which nobody grants: it can switch Spaces where the window manager
// takes _NET_CURRENT_DESKTOP, and see other programs' keys where the server has XInput 2.1.
class X11Permissions final : public Permissions {
  public:
    // `showSettings` opens the settings of the window manager, which is all that a user can change.
    X11Permissions(const DesktopSource& desktops, const RawInput& rawInput,
                   std::function<void()> showSettings)
        : desktops_(desktops), rawInput_(rawInput), showSettings_(std::move(showSettings)) {}

    [[nodiscard]] bool isAccessibilityTrusted() const override { return desktops_.canSwitch(); }
    [[nodiscard]] bool isInputMonitoringTrusted() const override { return rawInput_.isAvailable(); }
    void promptAccessibility() override { showSettings_(); }
    // Nothing can bring the extension to a running server.
    void requestInputMonitoring() override {}

  private:
    const DesktopSource& desktops_;
    const RawInput& rawInput_;
    std::function<void()> showSettings_;
};

}  // namespace platform::x11
