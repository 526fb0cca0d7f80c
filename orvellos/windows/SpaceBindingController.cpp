#include "orvellos/windows/SpaceBindingController.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

std::optional<std::string> otherSpace(const DriftDetector::Input& input,
                                      const DriftDetector::UuidLookup& spaceUUID) {
    for (const auto pin : input.currentPins)
        if (pin.value != 0 && pin != input.storedManagedID) return spaceUUID(pin);
    return std::nullopt;
}

constexpr auto kOrphanRecomputeDebounce = platform::seconds(0.06);

}  // namespace

std::vector<WindowDrift> DriftDetector::detect(std::span<const Input> inputs, const UuidLookup& spaceUUID) {
    std::vector<WindowDrift> drifts;
    for (const auto& input : inputs) {
        const auto actual = otherSpace(input, spaceUUID);
        if (!actual || *actual == input.storedUUID) continue;
        log(LogCategory::Nav,
            "drift[" + input.tagID.text() + "]: stored=" + input.storedUUID + " → actual=" + *actual);
        drifts.push_back({input.tagID, input.storedUUID, *actual});
    }
    return drifts;
}

std::vector<WindowDrift> DriftDetector::acceptedDrifts(std::span<const WindowDrift> drifts,
                                                       bool missionControlRecentlyActive) {
    std::vector<WindowDrift> accepted;
    if (!missionControlRecentlyActive) return accepted;
    std::ranges::copy_if(drifts, std::back_inserter(accepted), [&](const auto& drift) {
        return std::ranges::count(drifts, drift.actualUUID, &WindowDrift::actualUUID) == 1;
    });
    return accepted;
}

void SpaceBindingController::relocate() {
    const auto drifts = spaces_.isSharedSpacesMode() ? std::vector<WindowDrift>() : detectDrifts();
    if (!drifts.empty()) {
        const auto accepted =
            DriftDetector::acceptedDrifts(drifts, missionControl_.missionControlRecentlyActive());
        if (accepted.size() < drifts.size())
            log(LogCategory::Nav,
                fmt::format("relocate: rejecting {} of {} window drift(s) — macOS-driven relocation "
                            "signature; preserving stored bindings",
                            drifts.size() - accepted.size(), drifts.size()));
        for (const auto& drift : accepted) follow(drift);
        if (!accepted.empty()) tags_.refreshTagsFromStore();
    }
    enforce();
}

void SpaceBindingController::follow(const WindowDrift& drift) {
    tags_.updateSpaceUUIDInStore(drift.tagID, drift.actualUUID);
    const auto* window = tags_.windowFor(drift.tagID);
    if (!window) return;
    spaces_.removeWindow(window->windowNumber(), drift.storedUUID);
    if (const auto* backup = window->mcBackup())
        spaces_.removeWindow(backup->windowNumber(), drift.storedUUID);
}

std::vector<WindowDrift> SpaceBindingController::detectDrifts() const {
    std::vector<DriftDetector::Input> inputs;
    for (const auto& tag : tags_.tagsProvider()) {
        const auto* window = tag.spaceUUID ? tags_.windowFor(tag.id) : nullptr;
        const auto space = window ? spaces_.managedSpaceID(*tag.spaceUUID) : std::nullopt;
        if (!space) continue;
        inputs.push_back(
            {tag.id, tag.label, *tag.spaceUUID, *space, spaces_.spaceIDsForWindow(window->windowNumber())});
    }
    return DriftDetector::detect(inputs, [this](auto space) { return spaces_.spaceUUID(space); });
}

void SpaceBindingController::enforce() {
    for (const auto& tag : tags_.tagsProvider()) {
        auto* window = tags_.windowFor(tag.id);
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
    for (const auto& tag : tags_.tagsProvider())
        if (tag.spaceUUID && !live.contains(*tag.spaceUUID)) orphans.insert(tag.id);
    if (orphans == orphanedTagIDs_.get()) return;
    logVerbose("recomputeSpaceOrphans: {} → {} orphaned tag(s)", orphanedTagIDs_.get().size(),
               orphans.size());
    orphanedTagIDs_.set(std::move(orphans));
}

void SpaceBindingController::scheduleOrphanRecompute() {
    orphanRecomputeDebounce_ = runLoop_.after(kOrphanRecomputeDebounce, [this] {
        const auto before = orphanedTagIDs_.get();
        recomputeSpaceOrphans();
        if (orphanedTagIDs_.get() != before) reconciler_.reconcile();
    });
}

void SpaceBindingController::healOrphanedDetachedTags() {
    const auto screens = screens_.screens();
    if (screens.empty()) return;
    std::vector<TagID> lost;
    for (const auto& tag : tags_.tagsProvider())
        if (tag.frame && !platform::screenAt(screens, tag.frame->center())) lost.push_back(tag.id);
    if (lost.empty()) return;
    logVerbose("healOrphanedDetachedTags: clearing frames for {} orphaned tag(s)", lost.size());
    for (const auto& id : lost) tags_.clearFrameInStore(id);
    tags_.refreshTagsFromStore();
}

}  // namespace orvellos
