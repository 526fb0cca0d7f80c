#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "platform/Keys.h"
#include "platform/Observers.h"
#include "platform/x11/input/RawInput.h"
#include "platform/x11/input/X11Keyboard.h"

namespace platform::x11 {

// A key that went down while one of the application's own menus held the keyboard.
struct MenuKeyPress {
    xcb_keycode_t key = 0;
    std::uint16_t state = 0;  // the X modifiers
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    bool isUsed = false;  // whether the menu does something for these keys
};

// Registers hot keys as passive grabs on the root window. While one of the application's menus holds the
// keyboard no passive grab starts, so the menu passes on its keys. Raw events tell when a key comes up,
// whichever program has it.
class X11HotKeys final : public HotKeyService {
  public:
    X11HotKeys(XConnection& connection, XEvents& events, RawInput& input, const X11Keyboard& keyboard);
    ~X11HotKeys() override;
    X11HotKeys(const X11HotKeys&) = delete;
    X11HotKeys& operator=(const X11HotKeys&) = delete;

    // Waits for the server within the connection's patience. A late server refuses nothing.
    [[nodiscard]] std::int32_t registerHotKey(std::uint32_t id, const KeyEvent& keys) override;
    void unregisterHotKey(std::uint32_t id) override;
    Subscription onHotKey(std::function<void(const HotKeyEvent&)> handler) override {
        return handlers_.subscribe(std::move(handler));
    }
    // Takes in a key press of a menu's, and tells whether it is a hot key's. A key that the menu uses is no
    // hot key until it has come up. Needs every key press that a menu gets.
    bool pressInMenu(const MenuKeyPress& pressed);

  private:
    struct Keys {
        xcb_keycode_t key = 0;
        std::uint16_t modifiers = 0;
        bool operator==(const Keys&) const = default;
    };
    struct Grab {
        Keys keys;
        std::vector<std::uint16_t> lockStates;  // the layout's at that time
    };

    struct LastPress {
        xcb_timestamp_t time = XCB_CURRENT_TIME;
        bool isDown = false;
    };

    void handle(const xcb_generic_event_t& event);
    void handleRaw(const RawInputEvent& event);
    bool press(const Keys& keys);
    void release(std::uint32_t key);
    void ungrab(const Grab& grab);

    XConnection& connection_;
    const X11Keyboard& keyboard_;
    std::map<std::uint32_t, Grab> grabs_;             // by the caller's number
    std::set<std::uint32_t> held_;                    // the numbers of the hot keys that are down
    std::set<std::uint32_t> usedUp_;                  // keys that a menu has used, until they come up
    std::map<std::uint32_t, LastPress> lastPresses_;  // by key
    Observers<const HotKeyEvent&> handlers_;
    Subscription events_;
    Subscription rawEvents_;
};

}  // namespace platform::x11
