#pragma once

#include <xcb/xinput.h>

#include <cstdint>
#include <functional>

#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// A key or a button that went down or came up.
struct RawInputEvent {
    std::uint16_t type = 0;    // XCB_INPUT_RAW_KEY_PRESS and so on
    std::uint32_t detail = 0;  // the X key code or the button
    xcb_timestamp_t time = XCB_CURRENT_TIME;
};

// Follows the raw events of XInput 2: every key and button, whichever program gets it, and during grabs too.
// No program loses an event. A held key is reported once, since the server repeats keys only for the program
// that has the keyboard.
class RawInput {
  public:
    // Waits for the server to tell its version of the extension.
    RawInput(XConnection& connection, XEvents& events);

    // Whether raw events come at all, and during other programs' grabs too (XInput 2.1).
    [[nodiscard]] bool isAvailable() const { return opcode_ != 0; }
    // Adds to the reported kinds of events: XCB_INPUT_XI_EVENT_MASK_RAW_….
    void select(std::uint32_t eventMask);
    Subscription subscribe(std::function<void(const RawInputEvent&)> handler) {
        return handlers_.subscribe(std::move(handler));
    }

  private:
    void handle(const xcb_generic_event_t& event);

    XConnection& connection_;
    std::uint8_t opcode_ = 0;
    std::uint32_t eventMask_ = 0;
    Observers<const RawInputEvent&> handlers_;
    Subscription events_;
};

}  // namespace platform::x11
