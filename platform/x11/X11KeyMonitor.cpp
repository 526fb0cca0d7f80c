#include "platform/x11/X11KeyMonitor.h"

#include <algorithm>

#include "platform/x11/KeyCodes.h"

namespace platform::x11 {

namespace {

// A keyboard that is unplugged may never tell that its keys came up.
constexpr auto kLongestHold = std::chrono::seconds(30);

constexpr auto kKeysAndButtons = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                 XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                                 XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;

}  // namespace

X11KeyMonitor::X11KeyMonitor(RawInput& input, const X11Keyboard& keyboard, RunLoop& runLoop,
                             std::function<bool()> ownWindowHasFocus)
    : input_(input),
      keyboard_(keyboard),
      runLoop_(runLoop),
      ownWindowHasFocus_(std::move(ownWindowHasFocus)),
      events_(input.subscribe([this](const auto& event) { handle(event); })) {}

Subscription X11KeyMonitor::addGlobalKeyDownMonitor(std::function<void(const KeyEvent&)> handler) {
    if (!input_.isAvailable() || !keyboard_.isAvailable()) return {};
    input_.select(kKeysAndButtons);
    return handlers_.subscribe(std::move(handler));
}

void X11KeyMonitor::handle(const RawInputEvent& event) {
    if (event.type == XCB_INPUT_RAW_KEY_PRESS)
        press(event.detail);
    else if (event.type == XCB_INPUT_RAW_KEY_RELEASE)
        release(event.detail);
    else if (event.type == XCB_INPUT_RAW_BUTTON_PRESS)
        tappedKey_ = 0;
}

void X11KeyMonitor::press(std::uint32_t key) {
    tappedKey_ = key;
    if (const auto keyRepeat = keyboard_.repeatOf(key)) {
        heldKey_ = key;
        heldSince_ = runLoop_.now();
        repeatTimer_ = runLoop_.after(keyRepeat->delay, [this] { repeat(); });
    }
    reportPress(key);
}

void X11KeyMonitor::release(std::uint32_t key) {
    if (key == heldKey_) repeatTimer_.cancel();
    if (key == std::exchange(tappedKey_, 0) && opensOverview(key, OverviewShortcut::When::Tapped))
        report(key::kMissionControl);
}

void X11KeyMonitor::repeat() {
    repeatTimer_ = {};
    const auto keyRepeat = keyboard_.repeatOf(heldKey_);
    if (!keyRepeat || runLoop_.now() - heldSince_ > kLongestHold) return;
    repeatTimer_ = runLoop_.after(keyRepeat->interval, [this] { repeat(); });
    reportPress(heldKey_);
}

void X11KeyMonitor::reportPress(std::uint32_t key) {
    if (opensOverview(key, OverviewShortcut::When::Pressed))
        report(key::kMissionControl);
    else if (const auto keyCode = virtualKeyCode(key))
        report(*keyCode);
}

void X11KeyMonitor::report(std::uint16_t keyCode) {
    if (ownWindowHasFocus_ && ownWindowHasFocus_()) return;
    handlers_.notify({keyCode, keyboard_.modifierFlags()});
}

bool X11KeyMonitor::opensOverview(std::uint32_t key, OverviewShortcut::When when) const {
    const auto flags = keyboard_.modifierFlags() & ~modifier::kCapsLock;
    return std::ranges::any_of(shortcuts_, [&](const OverviewShortcut& shortcut) {
        if (shortcut.when != when) return false;
        // A symbol on the key's second level takes Shift to type, which the shortcut does not name.
        return (flags == shortcut.modifierFlags && keyboard_.gives(key, shortcut.symbol, false)) ||
               (flags == (shortcut.modifierFlags | modifier::kShift) &&
                keyboard_.gives(key, shortcut.symbol, true));
    });
}

}  // namespace platform::x11
