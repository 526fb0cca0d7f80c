#include "orvellos/menu/Hotkeys.h"

#include <algorithm>

#include "orvellos/menu/MainMenuItems.h"
#include "orvellos/settings/HotkeyNames.h"

namespace orvellos {

namespace {

// The other rows that show keys show those of a hotkey.
bool isOfTheMenu(const platform::KeyEquivalent& keys) {
    return (keys.modifierFlags & (platform::modifier::kControl | platform::modifier::kOption)) == 0;
}

}  // namespace

std::optional<std::string> OwnKeys::useOf(const platform::KeyEvent& keys,
                                          const keyboard_shortcuts::Name& name) const {
    const auto shortcut = keyboard_shortcuts::shortcutOf(keys);
    for (const auto& [other, title] : hotkey::kTitles)
        if (other.rawValue != name.rawValue && hotkeys.getShortcut(other) == shortcut)
            return std::string(title);
    const auto text = keyNames.textOf(keys.keyCode);
    for (const auto& menu : mainMenu(nullptr))
        for (const auto& item : menu.items)
            if (menuBar.isChosenBy(item.keyEquivalent, text, keys.modifierFlags)) return item.title;
    for (const auto& item : statusMenu())
        if (item.keyEquivalent && isOfTheMenu(*item.keyEquivalent) &&
            menuBar.isChosenBy(*item.keyEquivalent, text, keys.modifierFlags))
            return item.title;
    return std::nullopt;
}

namespace {

constexpr std::array kLadder = {TagSize::ExtraSmall, TagSize::Small, TagSize::Medium, TagSize::Large,
                                TagSize::ExtraLarge};

// The next size up or down; at the end of the ladder the same, and medium for a size that is not on it.
TagSize step(TagSize size, std::ptrdiff_t by) {
    const auto* found = std::ranges::find(kLadder, size);
    if (found == kLadder.end()) return TagSize::Medium;
    const auto last = static_cast<std::ptrdiff_t>(kLadder.size()) - 1;
    const auto next = std::clamp<std::ptrdiff_t>(found - kLadder.begin() + by, 0, last);
    return kLadder.at(static_cast<std::size_t>(next));
}

void tagCurrentSpace(const HotkeyTargets& targets) {
    const auto space = targets.spaces.currentSpaceUUIDOnPointerDisplay();
    const bool isTagged = space && std::ranges::any_of(targets.manager.tags(), [&](const Tag& tag) {
                              return tag.spaceUUID == space;
                          });
    if (isTagged)
        targets.panels.toggleEditPanel();
    else
        targets.panels.toggleCreatePanel(space);
}

}  // namespace

void installHotkeys(keyboard_shortcuts::Registry& registry, const HotkeyTargets& targets) {
    for (const auto& name : hotkey::kAll) registry.create(name);
    auto& settings = targets.settings;
    auto& manager = targets.manager;
    registry.onKeyUp(hotkey::tagThisSpace, [targets] { tagCurrentSpace(targets); });
    registry.onKeyUp(hotkey::toggleKillSwitch,
                     [&settings] { settings.killSwitchActive.set(!settings.killSwitchActive.get()); });
    registry.onKeyUp(hotkey::toggleEmbiggen,
                     [&settings] { settings.embiggenAllTags.set(!settings.embiggenAllTags.get()); });
    registry.onKeyUp(hotkey::biggerLabel,
                     [&settings] { settings.tagSize.set(step(settings.tagSize.get(), 1)); });
    registry.onKeyUp(hotkey::smallerLabel,
                     [&settings] { settings.tagSize.set(step(settings.tagSize.get(), -1)); });
    registry.onKeyDown(hotkey::openMCBig, [&manager] { manager.openMCBig(); });
    registry.onKeyUp(hotkey::quickSwitcher, [targets] { targets.panels.showQuickSwitcher(); });
    registry.onKeyDown(hotkey::peekTags, [&manager] { manager.peekBegin(); });
    registry.onKeyUp(hotkey::peekTags, [&manager] { manager.peekEnd(); });
}

}  // namespace orvellos
