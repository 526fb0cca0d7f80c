#include "platform/x11/X11Keyboard.h"

#include <algorithm>

#include "platform/x11/Extension.h"
#include "platform/x11/KeyCodes.h"
#include "platform/x11/Xkb.h"

namespace platform::x11 {

namespace {

// A change of layout comes as many events, and so does typing on two keyboards in turn.
constexpr auto kCoalesce = std::chrono::milliseconds(100);
constexpr auto kRetry = std::chrono::seconds(1);

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

// A client of this extension is told of a new layout by its events alone, no longer by MappingNotify.
void X11Keyboard::selectEvents() {
    constexpr auto kNewKeyboard = std::uint16_t{XCB_XKB_NKN_DETAIL_KEYCODES};
    constexpr auto kControls = std::uint32_t{XCB_XKB_BOOL_CTRL_REPEAT_KEYS} | XCB_XKB_CONTROL_PER_KEY_REPEAT |
                               XCB_XKB_CONTROL_CONTROLS_ENABLED;
    constexpr auto kMap = std::uint16_t{XCB_XKB_MAP_PART_KEY_SYMS};
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = kNewKeyboard;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
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
    if (notify.xkbType == XCB_XKB_STATE_NOTIFY)
        modifierFlags_ = x11::modifierFlags(notify.mods);
    else
        readLater();
}

void X11Keyboard::readLater() {
    if (readTimer_.isActive()) return;
    readTimer_ = runLoop_.after(kCoalesce, [this] {
        readTimer_ = {};
        if (!read() && !connection_.isBroken())
            readTimer_ = runLoop_.after(kRetry, [this] {
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
    const auto state = connection_.reply<xcb_xkb_get_state_reply_t>(stateCookie);
    const auto controls = connection_.reply<xcb_xkb_get_controls_reply_t>(controlsCookie);
    const auto symbols = connection_.reply<xcb_get_keyboard_mapping_reply_t>(symbolsCookie);
    if (!state || !controls || !symbols) return false;
    modifierFlags_ = x11::modifierFlags(state->mods);
    repeat_ = {std::chrono::milliseconds(controls->repeatDelay),
               std::chrono::milliseconds(controls->repeatInterval)};
    std::ranges::copy(controls->perKeyRepeat, repeatingKeys_.begin());
    if ((controls->enabledControls & XCB_XKB_BOOL_CTRL_REPEAT_KEYS) == 0) repeatingKeys_.fill(0);
    const auto* first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    symbols_.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(symbols.get()));
    symbolsPerKey_ = symbols->keysyms_per_keycode;
    return true;
}

std::optional<KeyRepeat> X11Keyboard::repeatOf(std::uint32_t xKeyCode) const {
    const auto byte = xKeyCode / 8;
    if (byte >= repeatingKeys_.size() || (repeatingKeys_[byte] >> (xKeyCode % 8) & 1) == 0)
        return std::nullopt;
    if (repeat_.interval <= Duration::zero()) return std::nullopt;
    return repeat_;
}

bool X11Keyboard::gives(std::uint32_t xKeyCode, xcb_keysym_t symbol, bool withShift) const {
    const auto firstKey = xcb_get_setup(connection_.get())->min_keycode;
    if (xKeyCode < firstKey) return false;
    constexpr std::size_t kGroups = 2;
    constexpr std::size_t kLevels = 2;  // in the core protocol's list: without and with Shift
    for (std::size_t group = 0; group < kGroups; ++group) {
        const auto column = group * kLevels + (withShift ? 1 : 0);
        const auto index = (xKeyCode - firstKey) * symbolsPerKey_ + column;
        if (column < symbolsPerKey_ && index < symbols_.size() && symbols_[index] == symbol) return true;
    }
    return false;
}

}  // namespace platform::x11
