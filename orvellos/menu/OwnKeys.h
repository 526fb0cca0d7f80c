#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "KeyboardShortcuts/Registry.h"
#include "platform/Menus.h"

namespace orvellos {

// The application menu and the "Edit" menu.
[[nodiscard]] std::vector<platform::MainMenu> mainMenu(std::function<void()> terminate);

// The keys that the application itself uses: its hotkeys and those of its menus.
struct OwnKeys {
    const keyboard_shortcuts::Registry& hotkeys;
    const platform::KeyNames& keyNames;
    const platform::MenuBar& menuBar;
    std::function<std::vector<platform::MenuItem>()> statusMenu;

    // The title of what is done on these keys, other than by that name; absent when nothing is.
    [[nodiscard]] std::optional<std::string> useOf(const platform::KeyEvent& keys,
                                                   const keyboard_shortcuts::Name& name) const;
};

}  // namespace orvellos
