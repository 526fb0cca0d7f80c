#pragma once

#include <functional>

#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// Follows the owner of a manager selection of the screen (ICCCM 2.8), which can change at any time.
class SelectionWatch {
  public:
    // `changed` is called with the new owner, or none.
    SelectionWatch(XConnection& connection, XEvents& events, xcb_atom_t selection,
                   std::function<void(xcb_window_t owner)> changed);

    // XCB_WINDOW_NONE when nobody owns the selection.
    [[nodiscard]] xcb_window_t owner() const { return owner_; }

  private:
    void handle(const xcb_generic_event_t& event);

    std::function<void(xcb_window_t)> changed_;
    xcb_atom_t selection_;
    std::uint8_t xfixesEvents_ = 0;
    xcb_window_t owner_ = XCB_WINDOW_NONE;
    Subscription subscription_;
};

}  // namespace platform::x11
