#include "platform/x11/overview/OverviewHints.h"

#include <utility>

namespace platform::x11 {

namespace {

bool isGrabOrUngrab(const xcb_generic_event_t& event) {
    const auto type = XEvents::type(event);
    if (type != XCB_FOCUS_IN && type != XCB_FOCUS_OUT) return false;
    const auto mode = reinterpret_cast<const xcb_focus_in_event_t&>(event).mode;
    return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
}

}  // namespace

OverviewHints::OverviewHints(XEvents& events, std::function<void()> overviewMayHaveChanged)
    : subscription_(events.subscribe([tell = std::move(overviewMayHaveChanged)](const auto& event) {
          if (isGrabOrUngrab(event)) tell();
      })) {
    events.selectOnRoot(XCB_EVENT_MASK_FOCUS_CHANGE);
}

}  // namespace platform::x11
