#include "platform/x11/input/KeyChord.h"

#include <xkbcommon/xkbcommon.h>
#include <algorithm>
#include <string>
#include <utility>

#include "platform/Text.h"
#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

namespace {

constexpr std::pair<std::string_view, std::uint64_t> kAcceleratorModifiers[] = {
    {"primary", modifier::kControl}, {"control", modifier::kControl}, {"ctrl", modifier::kControl},
    {"ctl", modifier::kControl},     {"shift", modifier::kShift},     {"shft", modifier::kShift},
    {"alt", modifier::kOption},      {"mod1", modifier::kOption},     {"super", modifier::kCommand},
    {"mod4", modifier::kCommand}};

// Absent for a modifier that no chord has.
std::optional<std::uint64_t> flagOf(std::string_view name) {
    const auto* found = std::ranges::find_if(
        kAcceleratorModifiers, [&](const auto& each) { return equalIgnoringCase(each.first, name); });
    return found == std::end(kAcceleratorModifiers) ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::vector<KeyChord> superTaps() {
    // While the key is let go it still counts as a modifier.
    return {{XKB_KEY_Super_L, modifier::kCommand, KeyChord::When::Tapped},
            {XKB_KEY_Super_R, modifier::kCommand, KeyChord::When::Tapped}};
}

std::optional<KeyChord> chordOfAccelerator(std::string_view accelerator) {
    KeyChord chord;
    while (accelerator.starts_with('<')) {
        const auto end = accelerator.find('>');
        const auto flag = flagOf(accelerator.substr(1, end - 1));
        if (end == std::string_view::npos || !flag) return std::nullopt;
        chord.modifierFlags |= *flag;
        accelerator.remove_prefix(end + 1);
    }
    const auto symbol = xkb_keysym_from_name(std::string(accelerator).c_str(), XKB_KEYSYM_NO_FLAGS);
    if (symbol == XKB_KEY_NoSymbol) return std::nullopt;
    chord.symbol = xkb_keysym_to_lower(symbol);
    return chord;
}

std::optional<KeyChord> chordOfKeys(const KeyEvent& keys, const X11Keyboard& keyboard) {
    const auto code = xKeyCode(keys.keyCode);
    const auto symbol = code ? keyboard.symbolOf(*code) : XKB_KEY_NoSymbol;
    if (symbol == XKB_KEY_NoSymbol) return std::nullopt;
    return KeyChord{symbol, modifierFlags(xModifiers(keys.modifierFlags))};
}

}  // namespace platform::x11
