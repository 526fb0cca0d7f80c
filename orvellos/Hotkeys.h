#pragma once

#include <array>

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/PanelController.h"
#include "orvellos/Settings.h"
#include "orvellos/SpaceIdentifier.h"
#include "orvellos/TagManager.h"

namespace orvellos {

// The actions that have a hotkey.
namespace hotkey {

inline constexpr std::int32_t kDefaultModifiers = keyboard_shortcuts::carbon::kControl |
                                                  keyboard_shortcuts::carbon::kOption |
                                                  keyboard_shortcuts::carbon::kCommand;
constexpr keyboard_shortcuts::Name named(std::string_view rawValue, std::int32_t keyCode) {
    return {rawValue, keyboard_shortcuts::Shortcut{keyCode, kDefaultModifiers}};
}

inline constexpr auto tagThisSpace = named("tagThisSpace", 17);         // T
inline constexpr auto toggleKillSwitch = named("toggleKillSwitch", 4);  // H
inline constexpr auto toggleEmbiggen = named("toggleEmbiggen", 11);     // B
inline constexpr auto biggerLabel = named("biggerLabel", 24);           // =
inline constexpr auto smallerLabel = named("smallerLabel", 27);         // -
inline constexpr auto openMCBig = named("openMCBig", platform::key::kUpArrow);
inline constexpr keyboard_shortcuts::Name quickSwitcher = {"quickSwitcher", {}};
inline constexpr auto peekTags = named("peekTags", 35);  // P

inline constexpr std::array kAll = {tagThisSpace, toggleKillSwitch, toggleEmbiggen, biggerLabel,
                                    smallerLabel, openMCBig,        quickSwitcher,  peekTags};

}  // namespace hotkey

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
