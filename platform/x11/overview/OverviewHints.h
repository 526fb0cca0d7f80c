#pragma once

#include <functional>
#include <utility>

#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// Tells when the window manager takes or gives back the keyboard on the root window, which KWin does when one
// of its overviews opens, when it closes, and when one of its shortcuts is pressed. Other programs hold the
// keyboard too, so it is a hint and no more.
class OverviewHints {
  public:
    OverviewHints(XEvents& events, std::function<void()> overviewMayHaveChanged)
        : subscription_(events.subscribe([tell = std::move(overviewMayHaveChanged)](const auto& event) {
              if (isGrabOrUngrab(event)) tell();
          })) {
        events.selectOnRoot(XCB_EVENT_MASK_FOCUS_CHANGE);
    }

  private:
    [[nodiscard]] static bool isGrabOrUngrab(const xcb_generic_event_t& event) {
        const auto type = XEvents::type(event);
        if (type != XCB_FOCUS_IN && type != XCB_FOCUS_OUT) return false;
        const auto mode = reinterpret_cast<const xcb_focus_in_event_t&>(event).mode;
        return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
    }

    Subscription subscription_;
};

}  // namespace platform::x11
