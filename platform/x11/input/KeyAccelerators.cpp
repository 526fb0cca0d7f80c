#include "platform/x11/input/KeyAccelerators.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <string>
#include <utility>

#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

namespace {

constexpr std::pair<std::string_view, std::uint64_t> kModifiers[] = {
    {"primary", modifier::kControl}, {"control", modifier::kControl}, {"ctrl", modifier::kControl},
    {"ctl", modifier::kControl},     {"shift", modifier::kShift},     {"shft", modifier::kShift},
    {"alt", modifier::kOption},      {"mod1", modifier::kOption},     {"super", modifier::kCommand},
    {"mod4", modifier::kCommand}};

std::string lowerCased(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return lower;
}

// Absent for one that no shortcut of ours can have.
std::optional<std::uint64_t> flagOf(std::string_view name) {
    const auto* found = std::ranges::find(kModifiers, lowerCased(name),
                                          [](const auto& each) { return std::string(each.first); });
    return found == std::end(kModifiers) ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::optional<KeyShortcut> shortcutOfAccelerator(std::string_view accelerator) {
    KeyShortcut shortcut;
    while (accelerator.starts_with('<')) {
        const auto end = accelerator.find('>');
        const auto flag = flagOf(accelerator.substr(1, end - 1));
        if (end == std::string_view::npos || !flag) return std::nullopt;
        shortcut.modifierFlags |= *flag;
        accelerator.remove_prefix(end + 1);
    }
    const auto symbol = xkb_keysym_from_name(std::string(accelerator).c_str(), XKB_KEYSYM_NO_FLAGS);
    if (symbol == XKB_KEY_NoSymbol) return std::nullopt;
    shortcut.symbol = xkb_keysym_to_lower(symbol);
    return shortcut;
}

std::optional<KeyShortcut> shortcutOfKeys(const KeyEvent& keys, const X11Keyboard& keyboard) {
    const auto code = xKeyCode(keys.keyCode);
    const auto symbol = code ? keyboard.symbolOf(*code) : XKB_KEY_NoSymbol;
    if (symbol == XKB_KEY_NoSymbol) return std::nullopt;
    return KeyShortcut{symbol, modifierFlags(xModifiers(keys.modifierFlags))};
}

}  // namespace platform::x11
