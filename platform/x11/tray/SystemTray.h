#pragma once

#include <functional>
#include <optional>

#include "platform/Geometry.h"
#include "platform/Windows.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/SelectionWatch.h"

namespace platform::x11 {

// Knows the screen's system tray, which takes icons' windows into itself (freedesktop.org's System Tray
// Protocol and XEmbed). A tray may come and go at any time.
class SystemTray {
  public:
    // `changed` is called when there is another tray, or none any more.
    SystemTray(XConnection& connection, const Atoms& atoms, XEvents& events, std::function<void()> changed);

    // The tray's own window, which tells one tray from the next; absent when there is none.
    [[nodiscard]] std::optional<WindowNumber> owner() const;
    // Whether icons are to have an alpha channel; elsewhere a tray may not take in a window with one.
    [[nodiscard]] bool wantsAlpha() const;
    // Asks the tray to take the window in and to show it. `changed` hears each time that the tray has,
    // or has let the window go.
    [[nodiscard]] Subscription dock(WindowNumber window, std::function<void(bool isTaken)> changed);
    // The colour beside a window that the tray has taken in; absent when it cannot be seen.
    [[nodiscard]] std::optional<Color> colorBeside(WindowNumber window) const;

  private:
    [[nodiscard]] bool hasAlpha(xcb_visualid_t visual) const;
    [[nodiscard]] xcb_window_t parentOf(WindowNumber window) const;

    XConnection& connection_;
    const Atoms& atoms_;
    XEvents& events_;
    SelectionWatch selection_;
};

}  // namespace platform::x11
