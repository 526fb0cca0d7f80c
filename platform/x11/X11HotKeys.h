#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "platform/HotKeyService.h"
#include "platform/Observers.h"
#include "platform/x11/RawInput.h"
#include "platform/x11/X11Keyboard.h"

namespace platform::x11 {

// Hot keys by passive grabs on the root window. While one of the application's menus holds the keyboard no
// grab is told of, so there the raw events of the same keys count.
class X11HotKeys final : public HotKeyService {
  public:
    // `ownMenuIsOpen` says whether a menu of this program holds the keyboard, without asking the server.
    X11HotKeys(XConnection& connection, XEvents& events, RawInput& input, const X11Keyboard& keyboard,
               std::function<bool()> ownMenuIsOpen);
    ~X11HotKeys() override;
    X11HotKeys(const X11HotKeys&) = delete;
    X11HotKeys& operator=(const X11HotKeys&) = delete;

    // Waits for the server, as long as the connection has patience; one that is late refuses nothing.
    [[nodiscard]] std::int32_t registerHotKey(std::uint32_t id, const KeyEvent& keys) override;
    void unregisterHotKey(std::uint32_t id) override;
    Subscription onHotKey(std::function<void(const HotKeyEvent&)> handler) override {
        return handlers_.subscribe(std::move(handler));
    }

  private:
    struct Keys {
        xcb_keycode_t key = 0;
        std::uint16_t modifiers = 0;
        bool operator==(const Keys&) const = default;
    };
    struct Grab {
        Keys keys;
        std::vector<std::uint16_t> lockStates;  // those of the layout at that time
    };

    void handle(const xcb_generic_event_t& event);
    void handleRaw(const RawInputEvent& event);
    void press(const Keys& keys);
    void release(std::uint32_t key);
    void ungrab(const Grab& grab);

    XConnection& connection_;
    const X11Keyboard& keyboard_;
    std::function<bool()> ownMenuIsOpen_;
    std::map<std::uint32_t, Grab> grabs_;  // by the caller's number
    std::set<std::uint32_t> held_;         // the numbers of those that are down
    Observers<const HotKeyEvent&> handlers_;
    Subscription events_;
    Subscription rawEvents_;
};

}  // namespace platform::x11
