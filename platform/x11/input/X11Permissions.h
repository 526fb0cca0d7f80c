#pragma once

#include <functional>
#include <utility>

#include "platform/Session.h"
#include "platform/x11/input/RawInput.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// On X11 nobody has to be asked: Spaces can be switched when the window manager takes that message, and keys
// be seen when the server has the extension for it.
class X11Permissions final : public Permissions {
  public:
    // `showSettings` opens the settings of the window manager, which are all that a user can change about it.
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
