#include "platform/x11/input/X11Keyboard.h"

#include <xkbcommon/xkbcommon.h>
#include <algorithm>
#include <array>

#include "platform/x11/connection/Extensions.h"
#include "platform/x11/connection/Xkb.h"
#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

namespace {

// A change of layout comes as many events, and so does typing on two keyboards in turn.
constexpr auto kCoalescingDelay = std::chrono::milliseconds(100);
constexpr auto kRetryDelay = std::chrono::seconds(1);

// The core protocol's list has two groups, each without and with Shift.
constexpr std::size_t kGroups = 2;
constexpr std::size_t kLevels = 2;

}  // namespace

X11Keyboard::X11Keyboard(XConnection& connection, XEvents& events, RunLoop& runLoop)
    : connection_(connection), runLoop_(runLoop) {
    const auto* extension = findExtension(connection_, xcb_xkb_id);
    if (!extension) return;
    const auto cookie = xcb_xkb_use_extension(connection_.get(), 1, 0);
    const auto version = connection_.reply<xcb_xkb_use_extension_reply_t>(cookie);
    if (!version || version->supported == 0) return;
    firstEvent_ = extension->first_event;
    selectEvents();
    events_ = events.subscribe([this](const auto& event) { handle(event); });
    if (!read()) readLater();
}

// To a client of this extension the server tells of a new layout by these events, no longer by MappingNotify.
void X11Keyboard::selectEvents() {
    constexpr auto kNewKeyboard = std::uint16_t{XCB_XKB_NKN_DETAIL_KEYCODES};
    constexpr auto kControls = std::uint32_t{XCB_XKB_BOOL_CTRL_REPEAT_KEYS} | XCB_XKB_CONTROL_PER_KEY_REPEAT |
                               XCB_XKB_CONTROL_CONTROLS_ENABLED;
    constexpr auto kMap = std::uint16_t{XCB_XKB_MAP_PART_KEY_SYMS};
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = kNewKeyboard;
    details.affectState = details.stateDetails =
        XCB_XKB_STATE_PART_MODIFIER_STATE | XCB_XKB_STATE_PART_GROUP_STATE;
    details.affectCtrls = details.ctrlDetails = kControls;
    xcb_xkb_select_events_aux(connection_.get(), XCB_XKB_ID_USE_CORE_KBD,
                              XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                  XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY,
                              0, 0, kMap, kMap, &details);
}

void X11Keyboard::handle(const xcb_generic_event_t& event) {
    if (XEvents::type(event) != firstEvent_) return;
    // All events of the extension have one number and begin alike.
    const auto& notify = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (notify.xkbType != XCB_XKB_STATE_NOTIFY) return readLater();
    modifierFlags_ = x11::modifierFlags(notify.mods);
    group_ = notify.group;
}

void X11Keyboard::readLater() {
    if (readTimer_.isActive()) return;
    readTimer_ = runLoop_.after(kCoalescingDelay, [this] {
        readTimer_ = {};
        if (!read() && !connection_.isBroken())
            readTimer_ = runLoop_.after(kRetryDelay, [this] {
                readTimer_ = {};
                readLater();
            });
    });
}

bool X11Keyboard::read() {
    auto* c = connection_.get();
    const auto* setup = xcb_get_setup(c);
    const auto stateCookie = xcb_xkb_get_state(c, XCB_XKB_ID_USE_CORE_KBD);
    const auto controlsCookie = xcb_xkb_get_controls(c, XCB_XKB_ID_USE_CORE_KBD);
    const auto symbolsCookie = xcb_get_keyboard_mapping(
        c, setup->min_keycode, static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1));
    const auto modifiersCookie = xcb_get_modifier_mapping(c);
    const auto state = connection_.reply<xcb_xkb_get_state_reply_t>(stateCookie);
    const auto controls = connection_.reply<xcb_xkb_get_controls_reply_t>(controlsCookie);
    const auto symbols = connection_.reply<xcb_get_keyboard_mapping_reply_t>(symbolsCookie);
    const auto modifiers = connection_.reply<xcb_get_modifier_mapping_reply_t>(modifiersCookie);
    if (!state || !controls || !symbols || !modifiers) return false;
    modifierFlags_ = x11::modifierFlags(state->mods);
    group_ = state->group;
    repeat_ = {std::chrono::milliseconds(controls->repeatDelay),
               std::chrono::milliseconds(controls->repeatInterval)};
    std::ranges::copy(controls->perKeyRepeat, repeatingKeys_.begin());
    if ((controls->enabledControls & XCB_XKB_BOOL_CTRL_REPEAT_KEYS) == 0) repeatingKeys_.fill(0);
    const auto* first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    symbols_.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(symbols.get()));
    symbolsPerKey_ = symbols->keysyms_per_keycode;
    readLocks(*modifiers);
    return true;
}

// Caps Lock has a modifier of its own; the layout gives the others theirs.
void X11Keyboard::readLocks(const xcb_get_modifier_mapping_reply_t& mapping) {
    constexpr std::size_t kModifierCount = 8;
    const auto* keys = xcb_get_modifier_mapping_keycodes(&mapping);
    lockModifiers_ = {XCB_MOD_MASK_LOCK};
    for (const auto lock : {XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock})
        for (std::size_t i = 0; i < kModifierCount * mapping.keycodes_per_modifier; ++i)
            if (const auto bit = static_cast<std::uint16_t>(1U << (i / mapping.keycodes_per_modifier));
                gives(keys[i], lock, false) && std::ranges::count(lockModifiers_, bit) == 0)
                lockModifiers_.push_back(bit);
}

std::optional<KeyRepeat> X11Keyboard::repeatOf(std::uint32_t xKeyCode) const {
    const auto byte = xKeyCode / 8;
    if (byte >= repeatingKeys_.size() || (repeatingKeys_[byte] >> (xKeyCode % 8) & 1) == 0)
        return std::nullopt;
    if (repeat_.interval <= Duration::zero()) return std::nullopt;
    return repeat_;
}

bool X11Keyboard::gives(std::uint32_t xKeyCode, xcb_keysym_t symbol, bool withShift) const {
    for (std::size_t group = 0; group < kGroups; ++group)
        if (symbolAt(xKeyCode, group * kLevels + (withShift ? 1 : 0)) == symbol) return true;
    return false;
}

xcb_keysym_t X11Keyboard::symbolOf(std::uint32_t xKeyCode) const {
    const auto own = symbolAt(xKeyCode, std::min(group_, kGroups - 1) * kLevels).value_or(0);
    return own != 0 ? own : symbolAt(xKeyCode, 0).value_or(0);
}

std::optional<xcb_keysym_t> X11Keyboard::symbolAt(std::uint32_t xKeyCode, std::size_t column) const {
    const auto firstKey = xcb_get_setup(connection_.get())->min_keycode;
    if (xKeyCode < firstKey || column >= symbolsPerKey_) return std::nullopt;
    const auto index = (xKeyCode - firstKey) * symbolsPerKey_ + column;
    return index < symbols_.size() ? std::optional(symbols_[index]) : std::nullopt;
}

std::string X11KeyNames::textOf(std::uint16_t keyCode) const {
    const auto code = xKeyCode(keyCode);
    if (!code) return {};
    std::array<char, 8> text{};
    const int length = xkb_keysym_to_utf8(keyboard_.symbolOf(*code), text.data(), text.size());
    const bool isPrinted = length > 1 && static_cast<unsigned char>(text[0]) > ' ';
    return isPrinted ? std::string(text.data()) : std::string();
}

}  // namespace platform::x11
