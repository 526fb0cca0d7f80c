#include "orvellos/menu/Hotkeys.h"

#include <algorithm>

#include "orvellos/settings/HotkeyNames.h"

namespace orvellos {

namespace {

// The next size up or down; at the end of the ladder the same, and medium for a size that is not on it.
TagSize step(TagSize size, std::ptrdiff_t by) {
    const auto* found = std::ranges::find(tagSizeLadder, size);
    if (found == tagSizeLadder.end()) return TagSize::Medium;
    const auto last = std::ssize(tagSizeLadder) - 1;
    const auto next = std::clamp<std::ptrdiff_t>(found - tagSizeLadder.begin() + by, 0, last);
    return tagSizeLadder.at(static_cast<std::size_t>(next));
}

void tagCurrentSpace(const HotkeyTargets& targets) {
    const auto space = targets.spaces.currentSpaceUUIDOnPointerDisplay();
    if (firstTagOfSpace(targets.manager.tags(), space))
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
