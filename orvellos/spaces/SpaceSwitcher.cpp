#include "orvellos/spaces/SpaceSwitcher.h"

#include <fmt/format.h>

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

template <typename... Arguments>
void logVerbosely(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    if (debugEchoEnabled())
        log(LogCategory::General, fmt::format(format, std::forward<Arguments>(arguments)...));
}

}  // namespace

bool switchToSpace(const SpaceIdentifier& spaces, const std::string& uuid) {
    const auto target = findTarget(spaces.snapshot(), uuid);
    if (!target) return false;
    const auto& setCurrent = spaces.setCurrentSpaceEntry();
    if (!setCurrent) {
        logVerbosely("switchToSpace: SetCurrentSpace symbol not found");
        return false;
    }
    const auto id = target->space;
    const auto connection = spaces.mainConnectionID();
    const auto previous = spaces.currentManagedSpaceID();
    logVerbosely("switchToSpace: display={} target={} prev={}", target->displayIdentifier, id.value,
                 previous ? std::to_string(previous->value) : "nil");
    if (const auto& show = spaces.showSpacesEntry()) {
        show(connection, {&id, 1});
        logVerbosely("  called Show({})", id.value);
    } else {
        logVerbosely("  Show symbol MISSING");
    }
    setCurrent(connection, target->displayIdentifier, id);
    logVerbosely("  called SetCurrent({})", id.value);
    if (const auto& hide = spaces.hideSpacesEntry(); !hide) {
        logVerbosely("  Hide symbol MISSING");
    } else if (previous && *previous != id) {
        hide(connection, {&*previous, 1});
        logVerbosely("  called Hide({})", previous->value);
    }
    return true;
}

}  // namespace orvellos
