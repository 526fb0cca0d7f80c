#pragma once

#include <array>

#include "platform/Panels.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// Brings windows to where the user is, as a pager would: nobody asks whether they may have the focus.
class WindowActivation final : public WindowFocus {
  public:
    static constexpr std::array<std::string_view, 2> kAtomNames = {"_NET_ACTIVE_WINDOW", "_NET_WM_DESKTOP"};
    WindowActivation(XConnection& connection, const DesktopSource& desktops);

    // For windows that the window manager manages.
    void activate(WindowNumber window) const override;
    void bringToUser(WindowNumber window) const override;

  private:
    XConnection& connection_;
    const DesktopSource& desktops_;
    xcb_atom_t activeWindow_ = 0;
    xcb_atom_t desktop_ = 0;
};

}  // namespace platform::x11
