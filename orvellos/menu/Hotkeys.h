#pragma once

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/panels/PanelController.h"
#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/TagManager.h"

namespace orvellos {

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
