#include "platform/x11/input/X11KeyMonitor.h"

#include <algorithm>
#include <array>

#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

namespace {

// A keyboard that is unplugged may never tell that its keys came up.
constexpr auto kLongestHoldTime = std::chrono::seconds(30);

constexpr auto kKeysAndButtons = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                 XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                                 XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;

// Keys that edit and search in programs. Only as the desktop's shortcuts do they mean something here.
bool isOfOtherPrograms(std::uint16_t keyCode) {
    constexpr std::array kKeys{key::kLeftArrow, key::kRightArrow, key::kUpArrow, key::kDownArrow, key::kF3};
    return std::ranges::count(kKeys, keyCode) > 0;
}

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
    if (key != std::exchange(tappedKey_, 0)) return;
    if (const auto meaning = meaningOf(key, KeyChord::When::Tapped)) report(*meaning);
}

void X11KeyMonitor::repeat() {
    repeatTimer_ = {};
    const auto keyRepeat = keyboard_.repeatOf(heldKey_);
    if (!keyRepeat || runLoop_.now() - heldSince_ > kLongestHoldTime) return;
    repeatTimer_ = runLoop_.after(keyRepeat->interval, [this] { repeat(); });
    reportPress(heldKey_);
}

void X11KeyMonitor::reportPress(std::uint32_t key) {
    if (const auto meaning = meaningOf(key, KeyChord::When::Pressed)) return report(*meaning);
    const auto keyCode = virtualKeyCode(key);
    if (keyCode && !isOfOtherPrograms(*keyCode)) report({*keyCode, keyboard_.modifierFlags()});
}

void X11KeyMonitor::report(const KeyEvent& event) {
    if (ownWindowHasFocus_ && ownWindowHasFocus_()) return;
    handlers_.notify(event);
}

std::optional<KeyEvent> X11KeyMonitor::meaningOf(std::uint32_t key, KeyChord::When when) const {
    const auto flags = keyboard_.modifierFlags() & ~modifier::kCapsLock;
    const auto isPressed = [&](const KeyChord& chord) {
        if (chord.when != when) return false;
        // A symbol on the key's second level takes Shift to type, which the shortcut does not name.
        return (flags == chord.modifierFlags && keyboard_.gives(key, chord.symbol, false)) ||
               (flags == (chord.modifierFlags | modifier::kShift) &&
                keyboard_.gives(key, chord.symbol, true));
    };
    const auto found = std::ranges::find_if(shortcuts_, isPressed, &TranslatedShortcut::chord);
    return found == shortcuts_.end() ? std::nullopt : std::optional(found->meaning);
}

}  // namespace platform::x11
