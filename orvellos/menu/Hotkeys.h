#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/panels/PanelController.h"
#include "orvellos/settings/HotkeyNames.h"
#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/TagManager.h"
#include "platform/Menus.h"

namespace orvellos {

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

// What the hotkeys act upon, for as long as keys are delivered.
struct HotkeyTargets {
    TagManager& manager;
    const SpaceIdentifier& spaces;
    Settings& settings;
    PanelController& panels;
};

// Makes the names known to the registry, with what each does from then on.
void installHotkeys(keyboard_shortcuts::Registry& registry, const HotkeyTargets& targets);

}  // namespace orvellos
