#include "orvellos/spaces/SpaceSwitcher.h"

#include <optional>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

using platform::ManagedSpaceId;

namespace {

struct Target {
    std::string displayIdentifier;
    ManagedSpaceId space;
};

std::optional<Target> findTarget(const SpaceSnapshot& snapshot, const std::string& uuid) {
    for (const auto& display : snapshot.displays) {
        if (!display.displayIdentifier) continue;
        for (const auto& space : display.spaces)
            if (space.uuid == uuid && space.managedSpaceID)
                return Target{*display.displayIdentifier, *space.managedSpaceID};
    }
    return std::nullopt;
}

}  // namespace

bool switchToSpace(const SpaceIdentifier& spaces, const std::string& uuid) {
    const auto target = findTarget(spaces.snapshot(), uuid);
    if (!target) return false;
    const auto& setCurrent = spaces.setCurrentSpaceEntry();
    if (!setCurrent) {
        logVerbose("switchToSpace: SetCurrentSpace symbol not found");
        return false;
    }
    const auto id = target->space;
    const auto connection = spaces.mainConnectionID();
    const auto previous = spaces.currentManagedSpaceID();
    logVerbose("switchToSpace: display={} target={} prev={}", target->displayIdentifier, id.value,
               previous ? std::to_string(previous->value) : "nil");
    if (const auto& show = spaces.showSpacesEntry()) {
        show(connection, {&id, 1});
        logVerbose("  called Show({})", id.value);
    } else {
        logVerbose("  Show symbol MISSING");
    }
    setCurrent(connection, target->displayIdentifier, id);
    logVerbose("  called SetCurrent({})", id.value);
    if (const auto& hide = spaces.hideSpacesEntry(); !hide) {
        logVerbose("  Hide symbol MISSING");
    } else if (previous && *previous != id) {
        hide(connection, {&*previous, 1});
        logVerbose("  called Hide({})", previous->value);
    }
    return true;
}

}  // namespace orvellos
