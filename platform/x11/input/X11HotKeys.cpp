#include "platform/x11/input/X11HotKeys.h"

#include <cstdlib>
#include <memory>
#include <utility>

#include "platform/x11/connection/Xkb.h"
#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

namespace {

constexpr std::uint16_t kModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

// The lock keys' modifiers in every combination. A grab is for one state of all modifiers.
std::vector<std::uint16_t> lockStates(const X11Keyboard& keyboard) {
    std::vector<std::uint16_t> states = {0};
    for (const auto lock : keyboard.lockModifiers())
        for (std::size_t i = states.size(); i-- > 0;)
            states.push_back(static_cast<std::uint16_t>(states[i] | lock));
    return states;
}

}  // namespace

X11HotKeys::X11HotKeys(XConnection& connection, XEvents& events, RawInput& input, const X11Keyboard& keyboard)
    : connection_(connection),
      keyboard_(keyboard),
      events_(events.subscribe([this](const auto& event) { handle(event); })),
      rawEvents_(input.subscribe([this](const auto& event) { handleRaw(event); })) {
    input.select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    if (!keyboard.isAvailable()) return;
    // Without it the server tells of a held key as released and pressed again and again.
    constexpr std::uint32_t kDetectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    connection_.discard(xcb_xkb_per_client_flags(connection_.get(), XCB_XKB_ID_USE_CORE_KBD, kDetectable,
                                                 kDetectable, 0, 0, 0));
}

X11HotKeys::~X11HotKeys() {
    for (const auto& [id, grab] : grabs_) ungrab(grab);
}

std::int32_t X11HotKeys::registerHotKey(std::uint32_t id, const KeyEvent& keys) {
    const auto code = xKeyCode(keys.keyCode);
    if (!code) return hot_key_status::kNoSuchKey;
    const Grab grab{{*code, static_cast<std::uint16_t>(xModifiers(keys.modifierFlags) & kModifiers)},
                    lockStates(keyboard_)};
    std::vector<xcb_void_cookie_t> cookies;
    for (const auto locks : grab.lockStates)
        cookies.push_back(xcb_grab_key_checked(connection_.get(), 0, connection_.root(),
                                               static_cast<std::uint16_t>(grab.keys.modifiers | locks),
                                               grab.keys.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isTaken = false;
    connection_.synchronize();
    for (const auto cookie : cookies) {
        if (connection_.isLate()) {
            xcb_discard_reply(connection_.get(), cookie.sequence);
            continue;
        }
        const std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error(
            xcb_request_check(connection_.get(), cookie), &std::free);
        isTaken = isTaken || error;
    }
    if (isTaken) {
        ungrab(grab);
        return hot_key_status::kAlreadyTaken;
    }
    grabs_[id] = grab;
    return hot_key_status::kRegistered;
}

void X11HotKeys::unregisterHotKey(std::uint32_t id) {
    held_.erase(id);
    if (const auto grab = grabs_.extract(id)) ungrab(grab.mapped());
}

void X11HotKeys::ungrab(const Grab& grab) {
    for (const auto locks : grab.lockStates)
        xcb_ungrab_key(connection_.get(), grab.keys.key, connection_.root(),
                       static_cast<std::uint16_t>(grab.keys.modifiers | locks));
    connection_.flush();
}

void X11HotKeys::handle(const xcb_generic_event_t& event) {
    const auto type = XEvents::type(event);
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    if (type == XCB_KEY_PRESS)
        press({key.detail, static_cast<std::uint16_t>(key.state & kModifiers)});
    else
        release(key.detail);
}

void X11HotKeys::handleRaw(const RawInputEvent& event) {
    if (event.type == XCB_INPUT_RAW_KEY_PRESS) {
        lastPresses_[event.detail] = {.time = event.time, .isDown = true};
    } else if (event.type == XCB_INPUT_RAW_KEY_RELEASE) {
        lastPresses_[event.detail].isDown = false;
        release(event.detail);
    }
}

// The menu's events come on the toolkit's connection, so a key's release may be known before its press.
bool X11HotKeys::pressInMenu(const MenuKeyPress& pressed) {
    const auto& last = lastPresses_[pressed.key];
    const bool isUp = last.time == pressed.time && !last.isDown;
    if (pressed.isUsed) {
        if (!isUp) usedUp_.insert(pressed.key);
        return false;
    }
    const bool isHotKey = press({pressed.key, static_cast<std::uint16_t>(pressed.state & kModifiers)});
    if (isUp) release(pressed.key);
    return isHotKey;
}

// A repeating key is pressed again while it is down.
bool X11HotKeys::press(const Keys& keys) {
    if (usedUp_.contains(keys.key)) return false;
    bool isHotKey = false;
    for (const auto& [id, grab] : std::map(grabs_)) {
        if (grab.keys != keys) continue;
        isHotKey = true;
        if (held_.insert(id).second) handlers_.notify({id, true});
    }
    return isHotKey;
}

// The key alone counts: its modifiers may have come up before.
void X11HotKeys::release(std::uint32_t key) {
    usedUp_.erase(key);
    for (const auto& [id, grab] : std::map(grabs_))
        if (grab.keys.key == key && held_.erase(id) > 0) handlers_.notify({id, false});
}

}  // namespace platform::x11
