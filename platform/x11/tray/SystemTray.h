#pragma once

#include <array>
#include <functional>
#include <optional>

#include "platform/Geometry.h"
#include "platform/Windows.h"
#include "platform/x11/connection/SelectionWatch.h"

namespace platform::x11 {

// Knows the screen's system tray, which takes icons' windows into itself (freedesktop.org's System Tray
// Protocol and XEmbed). A tray may come and go at any time.
class SystemTray {
  public:
    static constexpr std::string_view kSelection = "_NET_SYSTEM_TRAY";
    static constexpr std::array<std::string_view, 3> kAtomNames = {"_NET_SYSTEM_TRAY_OPCODE", "_XEMBED_INFO",
                                                                   "_NET_SYSTEM_TRAY_VISUAL"};
    // `changed` is called when there is another tray, or none any more.
    SystemTray(XConnection& connection, XEvents& events, std::function<void()> changed);

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
    XEvents& events_;
    xcb_atom_t opcode_ = 0;
    xcb_atom_t xembedInfo_ = 0;
    xcb_atom_t visual_ = 0;
    SelectionWatch selection_;
};

}  // namespace platform::x11
