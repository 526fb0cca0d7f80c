#include "orvellos/spaces/SpaceSnapshot.h"

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

}  // namespace orvellos
