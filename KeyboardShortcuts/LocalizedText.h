#pragma once

#include <string_view>

namespace keyboard_shortcuts {

// The recorder's texts by key. A pair of braces in them is the shortcut, or what uses it.
namespace text {

inline constexpr std::string_view record_shortcut = "Record Shortcut";
inline constexpr std::string_view press_shortcut = "Type Shortcut…";
inline constexpr std::string_view ok = "OK";
inline constexpr std::string_view cancel = "Cancel";
inline constexpr std::string_view keyboard_shortcut_used_by_menu_item = "{} is already used by “{}”.";
inline constexpr std::string_view keyboard_shortcut_used_by_menu_item_help =
    "Choose other keys, or change the ones over there first.";
inline constexpr std::string_view keyboard_shortcut_used_by_system = "The desktop already uses {}.";
inline constexpr std::string_view keyboard_shortcut_used_by_system_for =
    "The desktop already uses {} for “{}”.";
inline constexpr std::string_view keyboard_shortcuts_can_be_changed =
    "Most of the desktop’s own shortcuts can be changed in its keyboard settings. Used here as well, these "
    "keys "
    "may reach only one of the two.";
inline constexpr std::string_view force_use_shortcut = "Use Anyway";
inline constexpr std::string_view keyboard_shortcut_disallowed =
    "{} alone would no longer type. Hold Control, Alt or Super with it, or choose a function key.";
inline constexpr std::string_view keyboard_shortcut_refused =
    "Not in effect: another program has taken these keys.";
inline constexpr std::string_view keyboard_shortcut_impossible = "Not in effect: no such keys can be taken.";

}  // namespace text

}  // namespace keyboard_shortcuts
