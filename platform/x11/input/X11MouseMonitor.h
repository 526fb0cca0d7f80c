#pragma once

#include <functional>
#include <vector>

#include "platform/Panels.h"
#include "platform/x11/input/RawInput.h"

namespace platform::x11 {

// Watches the mouse buttons through the server's raw events, and asks on whose window the pointer is when one
// goes down.
class X11MouseMonitor final : public MouseMonitor {
  public:
    // What the toolkit tells about its own connection to the server.
    struct Toolkit {
        xcb_connection_t* connection = nullptr;
        // Whether a menu of the toolkit has the mouse, or has had it for the button that went down then.
        std::function<bool(xcb_timestamp_t)> isMenuClick;
    };

    X11MouseMonitor(RawInput& input, XConnection& connection, Toolkit toolkit);

    Subscription addLocalMouseDownMonitor(std::function<void(WindowNumber)> handler) override;
    Subscription addGlobalMouseDownMonitor(std::function<void()> handler) override;

  private:
    void follow();
    void handle(const RawInputEvent& event);
    [[nodiscard]] bool isOwn(xcb_window_t window) const;
    // The application's window under the pointer, or in the frame there; none when the pointer is elsewhere.
    [[nodiscard]] xcb_window_t ownWindowUnderPointer();

    RawInput& input_;
    XConnection& connection_;
    Toolkit toolkit_;
    Observers<WindowNumber> local_;
    Observers<> global_;
    Subscription events_;
};

}  // namespace platform::x11
