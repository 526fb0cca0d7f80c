#pragma once

#include <array>
#include <string_view>

#include "KeyboardShortcuts/Shortcut.h"

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

// In the order in which the user sees them, as they are called there.
struct Title {
    keyboard_shortcuts::Name name;
    std::string_view title;
};
inline constexpr std::array<Title, kAll.size()> kTitles = {{{tagThisSpace, "Tag this Space"},
                                                            {peekTags, "Peek at hidden tags"},
                                                            {quickSwitcher, "Jump to Space…"},
                                                            {toggleKillSwitch, "Hide for screen-sharing"},
                                                            {toggleEmbiggen, "Toggle embiggen"},
                                                            {openMCBig, "Mission Control (big tags)"},
                                                            {biggerLabel, "Bigger label"},
                                                            {smallerLabel, "Smaller label"}}};

}  // namespace hotkey

}  // namespace orvellos
