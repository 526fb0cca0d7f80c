#pragma once

#include <xcb/xcb.h>

#include <initializer_list>

#include "tests/support/XClient.h"

namespace desktop_test {

// The user's hands: a pointer and a keyboard driven through the X test extension. Every operation returns
// when the server has taken the event. A button also waits until the server has acted on it, which takes
// longer while a window manager holds the pointer to look at a click: events that pile up then can be lost.
class InputDevices {
  public:
    // `client` outlives this object.
    explicit InputDevices(XClient& client) : client_(client) {}

    // Root coordinates.
    void movePointer(int x, int y);
    void pressButton(xcb_button_t button);
    void releaseButton(xcb_button_t button);
    void click(int x, int y, xcb_button_t button = XCB_BUTTON_INDEX_1);
    // Holds the first button from one place to another, moving in `steps` steps.
    void drag(int fromX, int fromY, int toX, int toY, int steps = 8);

    // X key codes: evdev's code of the key + 8.
    void pressKey(xcb_keycode_t key) { fake(XCB_KEY_PRESS, key); }
    void releaseKey(xcb_keycode_t key) { fake(XCB_KEY_RELEASE, key); }
    // Presses the keys in this order and releases them in the opposite one.
    void typeKeys(std::initializer_list<xcb_keycode_t> keys);
    // The key that gives this key symbol on any level; 0 when none does.
    [[nodiscard]] xcb_keycode_t keyFor(xcb_keysym_t symbol) const;

  private:
    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);
    [[nodiscard]] bool isHeld(xcb_button_t button) const;

    XClient& client_;
};

}  // namespace desktop_test
