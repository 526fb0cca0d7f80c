#pragma once

#include <functional>

#include "platform/Session.h"
#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// Whether the screens are dark to save power: the server's screen saver is on (MIT-SCREEN-SAVER). The server
// turns it on too when it puts the monitors into a power saving state (DPMS), which has no events of its own,
// so the server is never asked again.
class X11ScreenPower {
  public:
    // Waits for the server to tell the saver's present state.
    X11ScreenPower(XConnection& connection, XEvents& events);

    // ScreensDidSleep and ScreensDidWake in turn; never where the server has no such extension.
    Subscription onEvent(std::function<void(SessionEvent)> action) {
        return changed_.subscribe(std::move(action));
    }

  private:
    void handle(const xcb_generic_event_t& event);

    std::uint8_t firstEvent_ = 0;
    bool asleep_ = false;
    Observers<SessionEvent> changed_;
    Subscription events_;
};

}  // namespace platform::x11
