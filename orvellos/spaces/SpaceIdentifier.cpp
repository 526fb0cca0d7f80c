#include "orvellos/spaces/SpaceIdentifier.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace orvellos {

namespace {

DisplaySpaces displaySpaces(const platform::DisplayEntry& entry) {
    DisplaySpaces display;
    display.displayIdentifier = entry.identifier;
    if (entry.currentSpace) {
        display.currentSpaceUUID = entry.currentSpace->uuid;
        display.currentManagedSpaceID = entry.currentSpace->managedSpaceId;
    }
    if (!entry.spaces) return display;
    for (const auto& space : *entry.spaces) {
        if (!space.uuid) continue;
        display.spaces.push_back({*space.uuid, space.managedSpaceId, entry.identifier.value_or(""),
                                  display.spaces.size(), space.uuid == display.currentSpaceUUID});
    }
    return display;
}

}  // namespace

SpaceSnapshot SpaceSnapshot::of(const std::optional<platform::ManagedDisplaySpaces>& answer) {
    SpaceSnapshot snapshot;
    if (!answer) return snapshot;
    snapshot.displays.reserve(answer->size());
    for (const auto& entry : *answer) snapshot.displays.push_back(displaySpaces(entry));
    return snapshot;
}

using platform::DisplayId;
using platform::ManagedSpaceId;
using platform::WindowNumber;

namespace {

constexpr std::string_view kMainIdentifier = "Main";
constexpr std::array<std::string_view, 3> kSetCurrentNames = {"SLSManagedDisplaySetCurrentSpace",
                                                              "CGSManagedDisplaySetCurrentSpace",
                                                              "_CGSManagedDisplaySetCurrentSpace"};
constexpr std::array<std::string_view, 2> kShowNames = {"SLSShowSpaces", "CGSShowSpaces"};
constexpr std::array<std::string_view, 2> kHideNames = {"SLSHideSpaces", "CGSHideSpaces"};

std::vector<std::string> uuidsOf(const std::vector<SpaceInfo>& spaces) {
    std::vector<std::string> uuids;
    uuids.reserve(spaces.size());
    for (const auto& space : spaces) uuids.push_back(space.uuid);
    return uuids;
}

// Fills in the first candidate that `resolve` finds.
template <typename EntryPoint, typename Names, typename Resolve>
void resolveFirst(EntryPoint& entry, const Names& names, Resolve resolve) {
    for (const auto name : names) {
        if (auto function = resolve(name)) {
            entry = {std::move(function), std::string(name)};
            return;
        }
    }
}

}  // namespace

SpaceIdentifier::SpaceIdentifier(const platform::SpaceLayout& layout, platform::WindowSpaces& windowSpaces,
                                 const platform::SpaceSwitchingEntries& entries,
                                 const platform::Screens& screens)
    : layout_(layout), windowSpaces_(windowSpaces), entries_(entries), screens_(screens) {}

SpaceSnapshot SpaceIdentifier::snapshot() const {
    return SpaceSnapshot::of(layout_.copyManagedDisplaySpaces());
}

std::optional<std::string> SpaceIdentifier::currentSpaceUUID() const {
    for (const auto& display : snapshot().displays)
        if (display.currentSpaceUUID) return display.currentSpaceUUID;
    return std::nullopt;
}

std::optional<std::string> SpaceIdentifier::currentSpaceUUIDOnPointerDisplay() const {
    const auto id = pointerDisplayID();
    if (!id) return currentSpaceUUID();
    for (const auto& display : snapshot().displays)
        if (display.currentSpaceUUID && matches(display, *id)) return display.currentSpaceUUID;
    return std::nullopt;
}

std::set<std::string> SpaceIdentifier::currentSpaceUUIDs() const {
    std::set<std::string> uuids;
    for (const auto& display : snapshot().displays)
        if (display.currentSpaceUUID) uuids.insert(*display.currentSpaceUUID);
    return uuids;
}

std::optional<ManagedSpaceId> SpaceIdentifier::currentManagedSpaceID() const {
    for (const auto& display : snapshot().displays)
        if (display.currentManagedSpaceID) return display.currentManagedSpaceID;
    return std::nullopt;
}

std::set<std::string> SpaceIdentifier::allSpaceUUIDs() const {
    const auto uuids = orderedSpaceUUIDs();
    return {uuids.begin(), uuids.end()};
}

std::vector<std::string> SpaceIdentifier::orderedSpaceUUIDs() const {
    std::vector<std::string> all;
    for (const auto& display : snapshot().displays)
        for (const auto& space : display.spaces) all.push_back(space.uuid);
    return all;
}

std::vector<std::string> SpaceIdentifier::orderedSpaceUUIDsForDisplay(DisplayId id) const {
    for (const auto& display : snapshot().displays)
        if (matches(display, id)) return uuidsOf(display.spaces);
    return {};
}

std::vector<std::string> SpaceIdentifier::orderedSpaceUUIDsOfFirstDisplay() const {
    const auto answer = layout_.copyManagedDisplaySpaces();
    if (!answer) return {};
    for (const auto& entry : *answer)
        if (entry.currentSpace && entry.spaces)
            return uuidsOf(SpaceSnapshot::of({{entry}}).displays.front().spaces);
    return {};
}

std::vector<std::string> SpaceIdentifier::orderedSpaceUUIDsOnPointerDisplay() const {
    const auto id = pointerDisplayID();
    return id ? orderedSpaceUUIDsForDisplay(*id) : orderedSpaceUUIDsOfFirstDisplay();
}

std::optional<std::size_t> SpaceIdentifier::currentSpaceIndexOnPointerDisplay() const {
    const auto current = currentSpaceUUIDOnPointerDisplay();
    if (!current) return std::nullopt;
    const auto uuids = orderedSpaceUUIDsOnPointerDisplay();
    const auto found = std::ranges::find(uuids, *current);
    if (found == uuids.end()) return std::nullopt;
    return static_cast<std::size_t>(found - uuids.begin());
}

std::optional<ManagedSpaceId> SpaceIdentifier::managedSpaceID(const std::string& uuid) const {
    for (const auto& display : snapshot().displays)
        for (const auto& space : display.spaces)
            if (space.uuid == uuid && space.managedSpaceID) return space.managedSpaceID;
    return std::nullopt;
}

std::optional<std::string> SpaceIdentifier::spaceUUID(ManagedSpaceId id) const {
    for (const auto& display : snapshot().displays)
        for (const auto& space : display.spaces)
            if (space.managedSpaceID == id) return space.uuid;
    return std::nullopt;
}

std::optional<DisplayId> SpaceIdentifier::displayID(const std::string& uuid) const {
    for (const auto& display : snapshot().displays) {
        const auto holds = [&uuid](const SpaceInfo& space) { return space.uuid == uuid; };
        if (!display.displayIdentifier || std::ranges::none_of(display.spaces, holds)) continue;
        if (const auto id = displayIDOf(*display.displayIdentifier)) return id;
    }
    return std::nullopt;
}

bool SpaceIdentifier::isSharedSpacesMode() const {
    const auto screenCount = screens_.screens().size();
    if (screenCount < 2) return false;
    const auto answer = layout_.copyManagedDisplaySpaces();
    return answer && answer->size() < screenCount;
}

std::vector<ManagedSpaceId> SpaceIdentifier::spaceIDsForWindow(WindowNumber window) const {
    return windowSpaces_.copySpacesForWindow(window);
}

bool SpaceIdentifier::moveWindow(WindowNumber window, const std::string& uuid) const {
    const auto target = managedSpaceID(uuid);
    if (!target) return false;
    windowSpaces_.addWindowToSpace(window, *target);
    const auto current = currentManagedSpaceID();
    if (current && *current != *target) windowSpaces_.removeWindowFromSpace(window, *current);
    return true;
}

bool SpaceIdentifier::removeWindow(WindowNumber window, const std::string& uuid) const {
    const auto space = managedSpaceID(uuid);
    if (space) windowSpaces_.removeWindowFromSpace(window, *space);
    return space.has_value();
}

std::string SpaceIdentifier::symbolStatusLine() const {
    const auto& found = entryPoints();
    return "setCurrent=" + found.setCurrent.name + "  show=" + found.show.name + "  hide=" + found.hide.name;
}

const platform::SetCurrentSpaceEntry& SpaceIdentifier::setCurrentSpaceEntry() const {
    return entryPoints().setCurrent.function;
}

const platform::SpaceListEntry& SpaceIdentifier::showSpacesEntry() const {
    return entryPoints().show.function;
}

const platform::SpaceListEntry& SpaceIdentifier::hideSpacesEntry() const {
    return entryPoints().hide.function;
}

const SpaceIdentifier::EntryPoints& SpaceIdentifier::entryPoints() const {
    std::call_once(entryPoints_.once, [this] {
        const auto setCurrent = [this](auto name) { return entries_.resolveSetCurrentSpace(name); };
        const auto spaceList = [this](auto name) { return entries_.resolveSpaceList(name); };
        resolveFirst(entryPoints_.setCurrent, kSetCurrentNames, setCurrent);
        resolveFirst(entryPoints_.show, kShowNames, spaceList);
        resolveFirst(entryPoints_.hide, kHideNames, spaceList);
    });
    return entryPoints_;
}

// Absent when there is no screen, or the screen has no display id. Screens that share their Spaces are the
// main display, wherever on them the pointer is.
std::optional<DisplayId> SpaceIdentifier::pointerDisplayID() const {
    if (isSharedSpacesMode()) return screens_.mainDisplayId();
    const auto screens = screens_.screens();
    if (screens.size() == 1) return screens.front().displayId;  // wherever the pointer is
    const auto location = screens_.pointerLocation();
    for (const auto& screen : screens)
        if (screen.frame.contains(location)) return screen.displayId;
    const auto main = screens_.mainScreen();
    return main ? main->displayId : std::nullopt;
}

bool SpaceIdentifier::matches(const DisplaySpaces& display, DisplayId id) const {
    if (!display.displayIdentifier) return false;
    if (*display.displayIdentifier == kMainIdentifier) return id == screens_.mainDisplayId();
    return screens_.displayUuid(id) == display.displayIdentifier;
}

std::optional<DisplayId> SpaceIdentifier::displayIDOf(const std::string& identifier) const {
    if (identifier == kMainIdentifier) return screens_.mainDisplayId();
    for (const auto& screen : screens_.screens())
        if (screen.displayId && screens_.displayUuid(*screen.displayId) == identifier)
            return screen.displayId;
    return std::nullopt;
}

}  // namespace orvellos
