#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// Who owns a manager selection of the screen (ICCCM 2.8): a compositor has "_NET_WM_CM", a system tray
// "_NET_SYSTEM_TRAY". That can change at any time.
class SelectionWatch {
  public:
    // The name with "_Sn" for the screen.
    [[nodiscard]] static std::string atomName(const XConnection& connection, std::string_view name);
    // `name` is the selection's without "_Sn". `changed` is called with the new owner, or
    // none.
    SelectionWatch(XConnection& connection, XEvents& events, std::string_view name,
                   std::function<void(xcb_window_t owner)> changed);

    // XCB_WINDOW_NONE when nobody does.
    [[nodiscard]] xcb_window_t owner() const { return owner_; }

  private:
    void handle(const xcb_generic_event_t& event);

    std::function<void(xcb_window_t)> changed_;
    xcb_atom_t selection_ = 0;
    std::uint8_t xfixesEvents_ = 0;
    xcb_window_t owner_ = XCB_WINDOW_NONE;
    Subscription subscription_;
};

}  // namespace platform::x11
