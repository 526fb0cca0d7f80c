#include "KeyboardShortcuts/LocalizedText.h"

#include <algorithm>
#include <array>

namespace keyboard_shortcuts {

namespace {

struct Text {
    std::string_view key;
    std::string_view text;
};
constexpr std::array kTexts = {
    Text{"record_shortcut", "Record Shortcut"},
    Text{"press_shortcut", "Type Shortcut…"},
    Text{"ok", "OK"},
    Text{"cancel", "Cancel"},
    Text{"keyboard_shortcut_used_by_menu_item", "{} is already used by “{}”."},
    Text{"choose_other_keys", "Choose other keys, or change the ones over there first."},
    Text{"keyboard_shortcut_used_by_system", "The desktop already uses {}."},
    Text{"keyboard_shortcut_used_by_system_for", "The desktop already uses {} for “{}”."},
    Text{"keyboard_shortcuts_can_be_changed",
         "Most of the desktop’s own shortcuts can be changed in its keyboard settings. Used here as well, "
         "these "
         "keys may reach only one of the two."},
    Text{"force_use_shortcut", "Use Anyway"},
    Text{"keyboard_shortcut_disallowed",
         "{} alone would no longer type. Hold Control, Alt or Super with it, or choose a function key."},
    Text{"keyboard_shortcut_refused", "Not in effect: another program has taken these keys."},
    Text{"keyboard_shortcut_impossible", "Not in effect: no such keys can be taken."}};

}  // namespace

std::string_view localizedText(std::string_view key) {
    const auto* found = std::ranges::find(kTexts, key, &Text::key);
    return found == kTexts.end() ? std::string_view() : found->text;
}

}  // namespace keyboard_shortcuts
