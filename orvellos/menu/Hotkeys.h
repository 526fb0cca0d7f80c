#pragma once

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/panels/PanelController.h"
#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/TagManager.h"

namespace orvellos {

// The parts of the application that the hotkeys act upon.
struct HotkeyTargets {
    TagManager& manager;
    const SpaceIdentifier& spaces;
    Settings& settings;
    PanelController& panels;
};

// Makes the names known to the registry and installs the handler of each.
void installHotkeys(keyboard_shortcuts::Registry& registry, const HotkeyTargets& targets);

}  // namespace orvellos
