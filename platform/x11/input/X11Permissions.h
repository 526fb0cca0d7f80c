#pragma once

#include <functional>
#include <utility>

#include "platform/Session.h"

namespace platform::x11 {

// On X11 nobody has to be asked: Spaces can be switched when the window manager takes that message, and keys
// be seen when the server has the extension for it.
class X11Permissions final : public Permissions, public PermissionPrompts {
  public:
    // `showSettings` opens the settings of the window manager, which are all that a user can change about it.
    struct Desktop {
        std::function<bool()> canSwitch;
        std::function<bool()> canSeeKeys;
        std::function<void()> showSettings;
    };
    explicit X11Permissions(Desktop desktop) : desktop_(std::move(desktop)) {}

    [[nodiscard]] bool isAccessibilityTrusted() const override { return desktop_.canSwitch(); }
    [[nodiscard]] bool isInputMonitoringTrusted() const override { return desktop_.canSeeKeys(); }
    void promptAccessibility() override { desktop_.showSettings(); }
    // Nothing can bring the extension to a running server.
    void requestInputMonitoring() override {}

  private:
    Desktop desktop_;
};

}  // namespace platform::x11
