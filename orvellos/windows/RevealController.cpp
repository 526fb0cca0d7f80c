#include "orvellos/windows/RevealController.h"

#include <fmt/format.h>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

void RevealController::beginTransientReveal(bool lock) {
    const bool effectiveLock = lock || transientRevealLocked_;
    log(LogCategory::Nav,
        fmt::format("beginTransientReveal START (timer {}) requestedLock={} effectiveLock={}",
                    transientRevealTimer_.isActive() ? "active" : "idle", lock, effectiveLock));
    logTimeline(fmt::format("transient reveal START: mode={} showRevealOnSwipe={} kill={} locked={}",
                            rawValue(settings_.visibilityMode.get()), settings_.showRevealOnSwipe.get(),
                            settings_.killSwitchActive.get(), effectiveLock));
    transientRevealTimer_.cancel();
    transientRevealActive_ = true;
    transientRevealLocked_ = effectiveLock;
    lockSafetyTimer_.cancel();
    if (effectiveLock) lockSafetyTimer_ = runLoop_.after(lockSafetyTimeout_, [this] { forceUnlock(); });
    applySizeAndReconcile();
    if (!effectiveLock) scheduleAutoHide(kGlanceDuration);
}

void RevealController::unlockTransientReveal(platform::Duration delay) {
    lockSafetyTimer_.cancel();
    if (!transientRevealActive_ || !transientRevealLocked_) return;
    logTimeline(fmt::format("transient reveal UNLOCK — auto-hide in {}s",
                            std::chrono::duration<double>(delay).count()));
    transientRevealLocked_ = false;
    scheduleAutoHide(delay);
}

void RevealController::forceUnlock() {
    logTimeline("transient reveal lock SAFETY TIMEOUT — force unlocking");
    unlockTransientReveal();
}

void RevealController::scheduleAutoHide(platform::Duration delay) {
    transientRevealTimer_ = runLoop_.after(delay, [this] { autoHide(); });
}

void RevealController::autoHide() {
    transientRevealTimer_.cancel();
    log(LogCategory::Nav, "transient reveal timer FIRED — hiding");
    logTimeline("transient reveal END (auto-hide elapsed)");
    transientRevealActive_ = false;
    applySizeAndReconcile();
}

void RevealController::applyEffectiveSize() {
    logTimeline(fmt::format("applyEffectiveSize: mcActive={} embiggen={} transient={}", missionControlActive_,
                            settings_.embiggenAllTags.get(), transientRevealActive_));
    applySize(settings_.tagSize.get(), true);
    logTimeline("applyEffectiveSize: done");
}

void RevealController::applySizeAndReconcile() {
    applyEffectiveSize();
    reconciler_.reconcile();
}

void RevealController::applySize(TagSize size, bool animate) {
    const auto& tags = tags_.tagsProvider();
    logVerbose("applySize: {} ({} tags)", rawValue(size), tags.size());
    logTimeline(fmt::format("applySize START: {} animate={} tags={}", rawValue(size), animate, tags.size()));
    for (const auto& tag : tags)
        if (auto* window = tags_.windowFor(tag.id))
            window->applyFrameAndSize(size, tag.label, tags_.homeTargetFrame(tag, size), animate);
    logTimeline("applySize END");
}

void RevealController::cancelTimers() {
    transientRevealTimer_.cancel();
    lockSafetyTimer_.cancel();
}

}  // namespace orvellos
