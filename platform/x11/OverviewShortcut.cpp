#include "platform/x11/OverviewShortcut.h"

#include <algorithm>
#include <utility>

#include "platform/KeyMonitor.h"

namespace platform::x11 {

namespace {

constexpr std::uint32_t kQtModifiers = 0xFE000000;
constexpr std::uint32_t kQtSpecialKeys = 0x01000000;  // below are Unicode's characters
constexpr xcb_keysym_t kUnicodeSymbols = 0x01000000;

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
    {0x01000000, 0xFF1B, 1},       // Escape
    {0x01000001, 0xFF09, 1},       // Tab
    {0x01000003, 0xFF08, 1},       // Backspace
    {0x01000004, 0xFF0D, 1},       // Return
    {0x01000005, 0xFF8D, 1},       // Enter
    {0x01000006, 0xFF63, 1},       // Insert
    {0x01000007, 0xFFFF, 1},       // Delete
    {0x01000008, 0xFF13, 1},       // Pause
    {0x01000009, 0xFF61, 1},       // Print
    {0x01000010, 0xFF50, 1},       // Home
    {0x01000011, 0xFF57, 1},       // End
    {0x01000012, 0xFF51, 4},       // Left, Up, Right, Down
    {0x01000016, 0xFF55, 2},       // Page Up, Page Down
    {0x01000030, 0xFFBE, 35},      // F1 to F35
    {0x01000053, 0xFFEB, 2},       // left and right Super
    {0x01000055, 0xFF67, 1},       // Menu
    {0x010000A2, 0x1008FF40, 16},  // the keys that start programs: Launch 0 to F
};

std::optional<xcb_keysym_t> symbolOfSpecialKey(std::uint32_t qtKey) {
    for (const auto& range : kSpecialKeys)
        if (qtKey >= range.firstQtKey && qtKey - range.firstQtKey < range.count)
            return range.firstSymbol + (qtKey - range.firstQtKey);
    return std::nullopt;
}

// Latin 1 has its own numbers as symbols, a capital letter's key gives the small one.
std::optional<xcb_keysym_t> symbolOfCharacter(std::uint32_t character) {
    const bool isCapital = (character >= 'A' && character <= 'Z') ||
                           (character >= 0xC0 && character <= 0xDE && character != 0xD7);
    if (character < 0x20) return std::nullopt;
    if (character <= 0xFF) return isCapital ? character + 0x20 : character;
    return kUnicodeSymbols | character;
}

std::optional<std::uint32_t> keyOfSpecialSymbol(xcb_keysym_t symbol) {
    for (const auto& range : kSpecialKeys)
        if (symbol >= range.firstSymbol && symbol - range.firstSymbol < range.count)
            return range.firstQtKey + (symbol - range.firstSymbol);
    return std::nullopt;
}

// A letter's key is named by the capital.
std::optional<std::uint32_t> characterOfSymbol(xcb_keysym_t symbol) {
    const bool isSmall =
        (symbol >= 'a' && symbol <= 'z') || (symbol >= 0xE0 && symbol <= 0xFE && symbol != 0xF7);
    if (symbol < 0x20) return std::nullopt;
    if (symbol <= 0xFF) return isSmall ? symbol - 0x20 : symbol;
    if ((symbol & ~0x00FFFFFFU) == kUnicodeSymbols) return symbol & 0x00FFFFFFU;
    return std::nullopt;
}

}  // namespace

std::optional<OverviewShortcut> shortcutOfQtKey(std::uint32_t qtKey) {
    const auto key = qtKey & ~kQtModifiers;
    const auto symbol = key < kQtSpecialKeys ? symbolOfCharacter(key) : symbolOfSpecialKey(key);
    if (!symbol) return std::nullopt;
    OverviewShortcut shortcut{.symbol = *symbol};
    for (const auto& [qtModifier, flag] : kModifiers)
        if ((qtKey & qtModifier) != 0) shortcut.modifierFlags |= flag;
    return shortcut;
}

std::optional<std::uint32_t> qtKeyOf(const OverviewShortcut& shortcut) {
    auto key = keyOfSpecialSymbol(shortcut.symbol);
    if (!key) key = characterOfSymbol(shortcut.symbol);
    if (!key) return std::nullopt;
    for (const auto& [qtModifier, flag] : kModifiers)
        if ((shortcut.modifierFlags & flag) != 0) *key |= qtModifier;
    return key;
}

std::vector<OverviewShortcut> shortcutsOfQtKeys(std::span<const std::uint32_t> qtKeys) {
    std::vector<OverviewShortcut> shortcuts;
    for (const auto qtKey : qtKeys)
        if (const auto shortcut = shortcutOfQtKey(qtKey)) shortcuts.push_back(*shortcut);
    return shortcuts;
}

std::vector<OverviewShortcut> superTaps() {
    constexpr xcb_keysym_t kLeftSuper = 0xFFEB;
    constexpr xcb_keysym_t kRightSuper = 0xFFEC;
    // While the key is let go it still counts as a modifier.
    return {{kLeftSuper, modifier::kCommand, OverviewShortcut::When::Tapped},
            {kRightSuper, modifier::kCommand, OverviewShortcut::When::Tapped}};
}

}  // namespace platform::x11
