#include "platform/x11/input/KeyShortcut.h"

#include <xkbcommon/xkbcommon.h>
#include <algorithm>
#include <string>
#include <utility>

#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

namespace {

constexpr std::uint32_t kQtModifiers = 0xFE000000;
constexpr std::uint32_t kQtSpecialKeys = 0x01000000;  // below are Unicode's characters

constexpr std::pair<std::uint32_t, std::uint64_t> kModifiers[] = {{0x02000000, modifier::kShift},
                                                                  {0x04000000, modifier::kControl},
                                                                  {0x08000000, modifier::kOption},
                                                                  {0x10000000, modifier::kCommand}};

// Keys that follow each other on both sides.
struct KeyRange {
    std::uint32_t firstQtKey;
    xcb_keysym_t firstSymbol;
    std::uint32_t count;
};
constexpr KeyRange kSpecialKeys[] = {
    {0x01000000, XKB_KEY_Escape, 1},
    {0x01000001, XKB_KEY_Tab, 1},
    {0x01000003, XKB_KEY_BackSpace, 1},
    {0x01000004, XKB_KEY_Return, 1},
    {0x01000005, XKB_KEY_KP_Enter, 1},
    {0x01000006, XKB_KEY_Insert, 1},
    {0x01000007, XKB_KEY_Delete, 1},
    {0x01000008, XKB_KEY_Pause, 1},
    {0x01000009, XKB_KEY_Print, 1},
    {0x01000010, XKB_KEY_Home, 1},
    {0x01000011, XKB_KEY_End, 1},
    {0x01000012, XKB_KEY_Left, 4},     // Left, Up, Right, Down
    {0x01000016, XKB_KEY_Page_Up, 2},  // Page Up, Page Down
    {0x01000030, XKB_KEY_F1, 35},      // F1 to F35
    {0x01000053, XKB_KEY_Super_L, 2},  // left and right Super
    {0x01000055, XKB_KEY_Menu, 1},
    {0x010000A2, XKB_KEY_XF86Launch0, 16},  // the keys that start programs: Launch 0 to F
};

std::optional<xcb_keysym_t> symbolOfSpecialKey(std::uint32_t qtKey) {
    for (const auto& range : kSpecialKeys)
        if (qtKey >= range.firstQtKey && qtKey - range.firstQtKey < range.count)
            return range.firstSymbol + (qtKey - range.firstQtKey);
    return std::nullopt;
}

// The symbol of the character's own key, which gives a letter in lower case.
std::optional<xcb_keysym_t> symbolOfCharacter(std::uint32_t character) {
    const auto symbol = xkb_utf32_to_keysym(character);
    if (character < 0x20 || symbol == XKB_KEY_NoSymbol) return std::nullopt;
    return xkb_keysym_to_lower(symbol);
}

std::optional<std::uint32_t> keyOfSpecialSymbol(xcb_keysym_t symbol) {
    for (const auto& range : kSpecialKeys)
        if (symbol >= range.firstSymbol && symbol - range.firstSymbol < range.count)
            return range.firstQtKey + (symbol - range.firstSymbol);
    return std::nullopt;
}

// A letter's key is named by the capital.
std::optional<std::uint32_t> characterOfSymbol(xcb_keysym_t symbol) {
    const auto character = xkb_keysym_to_utf32(xkb_keysym_to_upper(symbol));
    return character < 0x20 ? std::nullopt : std::optional(character);
}

}  // namespace

std::optional<KeyShortcut> shortcutOfQtKey(std::uint32_t qtKey) {
    const auto key = qtKey & ~kQtModifiers;
    const auto symbol = key < kQtSpecialKeys ? symbolOfCharacter(key) : symbolOfSpecialKey(key);
    if (!symbol) return std::nullopt;
    KeyShortcut shortcut{.symbol = *symbol};
    for (const auto& [qtModifier, flag] : kModifiers)
        if ((qtKey & qtModifier) != 0) shortcut.modifierFlags |= flag;
    return shortcut;
}

std::optional<std::uint32_t> qtKeyOf(const KeyShortcut& shortcut) {
    auto key = keyOfSpecialSymbol(shortcut.symbol);
    if (!key) key = characterOfSymbol(shortcut.symbol);
    if (!key) return std::nullopt;
    for (const auto& [qtModifier, flag] : kModifiers)
        if ((shortcut.modifierFlags & flag) != 0) *key |= qtModifier;
    return key;
}

std::vector<KeyShortcut> superTaps() {
    // While the key is let go it still counts as a modifier.
    return {{XKB_KEY_Super_L, modifier::kCommand, KeyShortcut::When::Tapped},
            {XKB_KEY_Super_R, modifier::kCommand, KeyShortcut::When::Tapped}};
}

namespace {

constexpr std::pair<std::string_view, std::uint64_t> kAcceleratorModifiers[] = {
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
    const auto* found = std::ranges::find(kAcceleratorModifiers, lowerCased(name),
                                          [](const auto& each) { return std::string(each.first); });
    return found == std::end(kAcceleratorModifiers) ? std::nullopt : std::optional(found->second);
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
