#pragma once

#include "platform/Panels.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// Brings windows to the user as a pager does, whose requests no focus-stealing prevention refuses.
class WindowActivation final : public WindowFocus {
  public:
    WindowActivation(XConnection& connection, const Atoms& atoms, const DesktopSource& desktops)
        : connection_(connection), atoms_(atoms), desktops_(desktops) {}

    // For windows that the window manager manages.
    void activate(WindowNumber window) const override;
    void bringToUser(WindowNumber window) const override;

  private:
    XConnection& connection_;
    const Atoms& atoms_;
    const DesktopSource& desktops_;
};

}  // namespace platform::x11
