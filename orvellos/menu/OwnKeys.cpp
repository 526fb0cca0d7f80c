#include "orvellos/menu/OwnKeys.h"

#include <utility>

#include "orvellos/settings/HotkeyNames.h"

namespace orvellos {

std::vector<platform::MainMenu> mainMenu(std::function<void()> terminate) {
    using platform::EditAction;
    constexpr auto kCommand = platform::modifier::kCommand;
    constexpr auto kShift = platform::modifier::kShift;
    return {{"", {{"Quit orvellos", std::move(terminate), {'q', kCommand}}}},
            {"Edit",
             {{"Undo", EditAction::Undo, {'z', kCommand}},
              {"Redo", EditAction::Redo, {'z', kCommand | kShift}},
              {"Cut", EditAction::Cut, {'x', kCommand}},
              {"Copy", EditAction::Copy, {'c', kCommand}},
              {"Paste", EditAction::Paste, {'v', kCommand}},
              {"Select All", EditAction::SelectAll, {'a', kCommand}}}}};
}

namespace {

// A row with other modifiers shows the keys of a hotkey.
bool isOfTheMenu(const platform::KeyEquivalent& keys) {
    return (keys.modifierFlags & (platform::modifier::kControl | platform::modifier::kOption)) == 0;
}

}  // namespace

std::optional<std::string> OwnKeys::useOf(const platform::KeyEvent& keys,
                                          const keyboard_shortcuts::Name& name) const {
    const auto shortcut = keyboard_shortcuts::shortcutOf(keys);
    for (const auto& [other, title] : hotkey::kTitles)
        if (other.rawValue != name.rawValue && services_.hotkeys.getShortcut(other) == shortcut)
            return std::string(title);
    const auto text = services_.keyNames.textOf(keys.keyCode);
    for (const auto& menu : mainMenu(nullptr))
        for (const auto& item : menu.items)
            if (services_.menuBar.isChosenBy(item.keyEquivalent, text, keys.modifierFlags)) return item.title;
    for (const auto& item : services_.statusMenu())
        if (item.keyEquivalent && isOfTheMenu(*item.keyEquivalent) &&
            services_.menuBar.isChosenBy(*item.keyEquivalent, text, keys.modifierFlags))
            return item.title;
    return std::nullopt;
}

}  // namespace orvellos
