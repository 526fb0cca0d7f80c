#include "orvellos/SpaceBindingController.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "orvellos/DebugLog.h"

namespace orvellos {

void SpaceBindingController::enforce() {
    for (const auto& tag : tagsProvider_()) {
        auto* window = windowFor_(tag.id);
        const auto space = window && tag.spaceUUID ? spaces_.managedSpaceID(*tag.spaceUUID) : std::nullopt;
        if (!space) continue;
        pin(tag, window->windowNumber(), *space, "main");
        if (const auto* backup = window->mcBackup()) pin(tag, backup->windowNumber(), *space, "backup");
    }
}

void SpaceBindingController::pin(const Tag& tag, platform::WindowNumber window,
                                 platform::ManagedSpaceId space, const char* which) {
    const auto pins = spaces_.spaceIDsForWindow(window);
    if (std::ranges::find(pins, space) != pins.end()) return;
    std::vector<std::uint64_t> ids;
    std::ranges::transform(pins, std::back_inserter(ids), &platform::ManagedSpaceId::value);
    log(LogCategory::Nav, fmt::format("enforce[{}]: pinning {} to stored {}; pins=[{}]",
                                      redactedLabel(tag.label), which, space.value, fmt::join(ids, ", ")));
    spaces_.moveWindow(window, *tag.spaceUUID);
}

void SpaceBindingController::recomputeSpaceOrphans() {
    const auto live = spaces_.allSpaceUUIDs();
    if (live.empty()) {
        log(LogCategory::Nav,
            "recomputeSpaceOrphans: CGS returned no Spaces — enumeration unavailable, keeping existing "
            "orphan set");
        return;
    }
    std::set<TagID> orphans;
    for (const auto& tag : tagsProvider_())
        if (tag.spaceUUID && !live.contains(*tag.spaceUUID)) orphans.insert(tag.id);
    if (orphans == orphanedTagIDs_.get()) return;
    if (debugEchoEnabled())
        log(LogCategory::General, fmt::format("recomputeSpaceOrphans: {} → {} orphaned tag(s)",
                                              orphanedTagIDs_.get().size(), orphans.size()));
    orphanedTagIDs_.set(std::move(orphans));
}

}  // namespace orvellos
