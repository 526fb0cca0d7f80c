#pragma once

#include <functional>
#include <vector>

#include "platform/Panels.h"
#include "platform/x11/input/RawInput.h"

namespace platform::x11 {

// What the toolkit knows of its windows and of the mouse.
class ToolkitMouse {
  public:
    virtual ~ToolkitMouse() = default;

    // The toolkit's own connection to the server; null on another platform.
    [[nodiscard]] virtual xcb_connection_t* connection() const = 0;
    // Whether a menu of the toolkit has the mouse, or has had it when a button went down at this server time.
    [[nodiscard]] virtual bool isMenuClick(xcb_timestamp_t time) const = 0;
};

// Watches the mouse buttons through the server's raw events. When one goes down it asks the server whose
// window the pointer is on.
class X11MouseMonitor final : public MouseMonitor {
  public:
    X11MouseMonitor(RawInput& input, XConnection& connection, const ToolkitMouse& toolkit)
        : input_(input), connection_(connection), toolkit_(toolkit) {}

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
    const ToolkitMouse& toolkit_;
    Observers<WindowNumber> local_;
    Observers<> global_;
    Subscription events_;
};

}  // namespace platform::x11
