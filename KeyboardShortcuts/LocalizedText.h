#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace keyboard_shortcuts {

// The recorder's texts by key. A pair of braces in a text is the shortcut or, as the second one, what uses
// it.
struct LocalizedText {
    std::string_view key;
    std::string_view text;
};
inline constexpr std::array kLocalizedTexts = {
    LocalizedText{"record_shortcut", "Record Shortcut"},
    LocalizedText{"press_shortcut", "Type Shortcut…"},
    LocalizedText{"ok", "OK"},
    LocalizedText{"cancel", "Cancel"},
    LocalizedText{"keyboard_shortcut_used_by_menu_item", "{} is already used by “{}”."},
    LocalizedText{"choose_other_keys", "Choose other keys, or change the ones over there first."},
    LocalizedText{"keyboard_shortcut_used_by_system", "The desktop already uses {}."},
    LocalizedText{"keyboard_shortcut_used_by_system_for", "The desktop already uses {} for “{}”."},
    LocalizedText{
        "keyboard_shortcuts_can_be_changed",
        "Most of the desktop’s own shortcuts can be changed in its keyboard settings. Used here as well, "
        "these keys may reach only one of the two."},
    LocalizedText{"force_use_shortcut", "Use Anyway"},
    LocalizedText{
        "keyboard_shortcut_disallowed",
        "{} alone would no longer type. Hold Control, Alt or Super with it, or choose a function key."},
    LocalizedText{"keyboard_shortcut_refused", "Not in effect: another program has taken these keys."},
    LocalizedText{"keyboard_shortcut_impossible", "Not in effect: no such keys can be taken."}};

// Only for the keys above.
[[nodiscard]] consteval std::string_view localizedText(std::string_view key) {
    return std::ranges::find(kLocalizedTexts, key, &LocalizedText::key)->text;
}

}  // namespace keyboard_shortcuts
