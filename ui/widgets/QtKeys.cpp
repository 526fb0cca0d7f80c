#include "ui/widgets/QtKeys.h"

#include <xkbcommon/xkbcommon.h>

#include <QKeyCombination>
#include <utility>

#include "platform/Keys.h"

namespace ui {

using platform::x11::KeyChord;

namespace {

constexpr std::pair<std::uint64_t, Qt::KeyboardModifier> kModifiers[] = {
    {platform::modifier::kShift, Qt::ShiftModifier},
    {platform::modifier::kControl, Qt::ControlModifier},
    {platform::modifier::kOption, Qt::AltModifier},
    {platform::modifier::kCommand, Qt::MetaModifier}};

// Keys that follow each other in the toolkit and in X, from the first to the last.
struct KeyRange {
    Qt::Key first;
    Qt::Key last;
    xcb_keysym_t firstSymbol;
};
constexpr KeyRange kSpecialKeys[] = {
    {Qt::Key_Escape, Qt::Key_Escape, XKB_KEY_Escape},
    {Qt::Key_Tab, Qt::Key_Tab, XKB_KEY_Tab},
    {Qt::Key_Backspace, Qt::Key_Backspace, XKB_KEY_BackSpace},
    {Qt::Key_Return, Qt::Key_Return, XKB_KEY_Return},
    {Qt::Key_Enter, Qt::Key_Enter, XKB_KEY_KP_Enter},
    {Qt::Key_Insert, Qt::Key_Insert, XKB_KEY_Insert},
    {Qt::Key_Delete, Qt::Key_Delete, XKB_KEY_Delete},
    {Qt::Key_Pause, Qt::Key_Pause, XKB_KEY_Pause},
    {Qt::Key_Print, Qt::Key_Print, XKB_KEY_Print},
    {Qt::Key_Home, Qt::Key_Home, XKB_KEY_Home},
    {Qt::Key_End, Qt::Key_End, XKB_KEY_End},
    {Qt::Key_Left, Qt::Key_Down, XKB_KEY_Left},
    {Qt::Key_PageUp, Qt::Key_PageDown, XKB_KEY_Page_Up},
    {Qt::Key_F1, Qt::Key_F35, XKB_KEY_F1},
    {Qt::Key_Super_L, Qt::Key_Super_R, XKB_KEY_Super_L},
    {Qt::Key_Menu, Qt::Key_Menu, XKB_KEY_Menu},
    {Qt::Key_Launch0, Qt::Key_LaunchF, XKB_KEY_XF86Launch0},
};

// A special key's number is beyond all of Unicode's characters; another key's is that of its character.
constexpr std::uint32_t kFirstSpecialKey = Qt::Key_Escape;

std::optional<xcb_keysym_t> symbolOfSpecialKey(std::uint32_t key) {
    for (const auto& [first, last, firstSymbol] : kSpecialKeys)
        if (key >= std::uint32_t{first} && key <= std::uint32_t{last}) return firstSymbol + (key - first);
    return std::nullopt;
}

// The symbol of the character's own key, which gives a letter in lower case.
std::optional<xcb_keysym_t> symbolOfCharacter(std::uint32_t character) {
    const auto symbol = xkb_utf32_to_keysym(character);
    if (character < ' ' || symbol == XKB_KEY_NoSymbol) return std::nullopt;
    return xkb_keysym_to_lower(symbol);
}

std::optional<std::uint32_t> specialKeyOf(xcb_keysym_t symbol) {
    for (const auto& [first, last, firstSymbol] : kSpecialKeys)
        if (symbol >= firstSymbol && symbol - firstSymbol <= std::uint32_t{last} - first)
            return first + (symbol - firstSymbol);
    return std::nullopt;
}

// A letter's key is named by the capital.
std::optional<std::uint32_t> characterOf(xcb_keysym_t symbol) {
    const auto character = xkb_keysym_to_utf32(xkb_keysym_to_upper(symbol));
    return character < ' ' ? std::nullopt : std::optional(character);
}

}  // namespace

Qt::KeyboardModifiers toolkitModifiers(std::uint64_t modifierFlags) {
    Qt::KeyboardModifiers modifiers;
    for (const auto& [flag, modifier] : kModifiers) modifiers.setFlag(modifier, (modifierFlags & flag) != 0);
    return modifiers;
}

std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers) {
    std::uint64_t flags = 0;
    for (const auto& [flag, modifier] : kModifiers)
        if (modifiers.testFlag(modifier)) flags |= flag;
    return flags;
}

std::optional<KeyChord> chordOfQtKey(std::uint32_t qtKey) {
    const auto combination = QKeyCombination::fromCombined(static_cast<int>(qtKey));
    const auto key = static_cast<std::uint32_t>(combination.key());
    const auto symbol = key < kFirstSpecialKey ? symbolOfCharacter(key) : symbolOfSpecialKey(key);
    if (!symbol) return std::nullopt;
    return KeyChord{*symbol, modifierFlags(combination.keyboardModifiers())};
}

std::optional<std::uint32_t> qtKeyOf(const KeyChord& chord) {
    auto key = specialKeyOf(chord.symbol);
    if (!key) key = characterOf(chord.symbol);
    if (!key) return std::nullopt;
    const QKeyCombination combination(toolkitModifiers(chord.modifierFlags), static_cast<Qt::Key>(*key));
    return static_cast<std::uint32_t>(combination.toCombined());
}

}  // namespace ui
