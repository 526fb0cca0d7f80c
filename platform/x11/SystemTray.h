#pragma once

#include <functional>
#include <optional>

#include "platform/Color.h"
#include "platform/Identifiers.h"
#include "platform/x11/SelectionWatch.h"

namespace platform::x11 {

// The screen's system tray, which takes icons' windows into itself (freedesktop.org's System Tray Protocol
// and XEmbed). There may be none, and one may come and go.
class SystemTray {
  public:
    SystemTray(XConnection& connection, XEvents& events, std::function<void(bool isThere)> changed);

    [[nodiscard]] bool isThere() const { return selection_.owner() != XCB_WINDOW_NONE; }
    // Asks the tray to take the window in and to show it.
    void dock(WindowNumber window) const;
    // Whether it has taken the window in.
    [[nodiscard]] bool hasTaken(WindowNumber window) const;
    // The colour beside a window that the tray has taken in; absent when it cannot be seen.
    [[nodiscard]] std::optional<Color> colorBeside(WindowNumber window) const;

  private:
    [[nodiscard]] xcb_window_t parentOf(WindowNumber window) const;

    XConnection& connection_;
    xcb_atom_t opcode_ = 0;
    xcb_atom_t xembedInfo_ = 0;
    SelectionWatch selection_;
};

}  // namespace platform::x11
