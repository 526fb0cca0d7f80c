#include "platform/x11/screens/X11ScreenPower.h"

#include <xcb/screensaver.h>

#include <utility>

#include "platform/x11/connection/Extensions.h"

namespace platform::x11 {

X11ScreenPower::X11ScreenPower(XConnection& connection, XEvents& events) {
    const auto* extension = findExtension(connection, xcb_screensaver_id);
    if (!extension) return;
    firstEvent_ = extension->first_event;
    xcb_screensaver_select_input(connection.get(), connection.root(), XCB_SCREENSAVER_EVENT_NOTIFY_MASK);
    const auto cookie = xcb_screensaver_query_info(connection.get(), connection.root());
    const auto info = connection.reply<xcb_screensaver_query_info_reply_t>(cookie);
    asleep_ = info && info->state == XCB_SCREENSAVER_STATE_ON;
    events_ = events.subscribe([this](const auto& event) { handle(event); });
}

void X11ScreenPower::handle(const xcb_generic_event_t& event) {
    if (XEvents::type(event) != firstEvent_ + XCB_SCREENSAVER_NOTIFY) return;
    const auto& notify = reinterpret_cast<const xcb_screensaver_notify_event_t&>(event);
    const bool asleep =
        notify.state == XCB_SCREENSAVER_STATE_ON || notify.state == XCB_SCREENSAVER_STATE_CYCLE;
    if (std::exchange(asleep_, asleep) == asleep) return;
    changed_.notify(asleep ? SessionEvent::ScreensDidSleep : SessionEvent::ScreensDidWake);
}

}  // namespace platform::x11
