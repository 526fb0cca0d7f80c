#include "orvellos/windows/VisibilityController.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "orvellos/base/DebugLog.h"
#include "orvellos/base/Describe.h"

namespace orvellos {

namespace {

// How a reveal finds a window, for the log.
std::string revealCase(double alpha) {
    if (alpha >= 1) return "reforce@1";
    return alpha <= 0 ? "fresh" : fmt::format("cancel-fade@{:.2f}", alpha);
}

void showWindow(TagWindow& window, const std::string& label, bool transientReveal) {
    const auto alpha = window.alphaValue();
    if (transientReveal) {
        const auto state = window.state();
        logTimeline(fmt::format("reveal '{}': instant {} onSpace={} occ={}", label, revealCase(alpha),
                                state.onActiveSpace ? "Y" : "N", state.unobscured ? "vis" : "hidden"));
        window.revealInstantly();
    } else if (!window.restsAtAlpha(1)) {
        logTimeline(fmt::format("reveal '{}': fade-in alpha={:.2f}", label, alpha));
        window.fade(true);
    }
}

void hideWindow(TagWindow& window, const std::string& label) {
    if (window.restsAtAlpha(0)) return;
    logTimeline(fmt::format("hide '{}': fade-out alpha={:.2f}", label, window.alphaValue()));
    window.fade(false);
}

void showBackup(TagWindow& window, TagWindow& backup) {
    window.setAlphaValue(0);
    window.setIgnoresMouseEvents(true);
    backup.setAlphaValue(1);
}

}  // namespace

VisibilityInputs VisibilityController::inputs() const {
    const auto& settings = services_.settings;
    const auto& reveal = services_.reveal;
    return {.mode = settings.visibilityMode.get(),
            .killSwitch = settings.killSwitchActive.get(),
            .transientReveal = reveal.transientRevealActive(),
            .editing = services_.editingContext.isActive().get(),
            .missionControl = reveal.missionControlActive(),
            .embiggen = settings.embiggenAllTags.get()};
}

bool VisibilityController::isOrphaned(const Tag& tag) const {
    return services_.binding.orphanedTagIDs().get().contains(tag.id);
}

void VisibilityController::hideFromTheStart() {
    const bool hidden = decideVisibility(inputs()) == TagVisibility::Hide;
    for (const auto& tag : services_.windows.tagsProvider())
        if (hidden || isOrphaned(tag)) services_.windows.windowFor(tag.id)->hideInstantly();
}

void VisibilityController::reconcile() {
    const auto now = inputs();
    if (debugEchoEnabled())
        logVerbose("reconcile: mode={} kill={} mcActive={} privateAPI=true currentUUID={}",
                   rawValue(now.mode), now.killSwitch, now.missionControl,
                   services_.spaces.currentSpaceUUID().value_or("nil"));
    log(LogCategory::Nav,
        fmt::format("reconcile: mode={} kill={} transientReveal={} editing={} mcActive={} embiggen={} "
                    "orphaned={}",
                    rawValue(now.mode), now.killSwitch, now.transientReveal, now.editing, now.missionControl,
                    now.embiggen, services_.binding.orphanedTagIDs().get().size()));
    for (const auto& tag : services_.windows.tagsProvider()) {
        if (isOrphaned(tag))
            hideOrphan(tag);
        else
            reconcileTag(tag, now);
    }
    // A window that was shown takes the mouse until it is known where the pointer is: at once, so that
    // nothing is asked of the window system for nothing.
    if (services_.clickThrough.timerHz() > 0) services_.clickThrough.tick();
    updateActiveTag();
}

void VisibilityController::hideOrphan(const Tag& tag) const {
    log(LogCategory::Nav, fmt::format("  tag='{}' uuid={} decision=orphan-hide", redactedLabel(tag.label),
                                      tag.spaceUUID.value_or("nil")));
    auto* window = services_.windows.windowFor(tag.id);
    if (!window) return;
    if (!window->restsAtAlpha(0)) window->fade(false);
    window->mcBackup()->setAlphaValue(0);
}

void VisibilityController::reconcileTag(const Tag& tag, const VisibilityInputs& inputs) const {
    const auto decision = decideVisibility(inputs);
    const auto label = redactedLabel(tag.label);
    log(LogCategory::Nav, fmt::format("  tag='{}' uuid={} decision={}", label, tag.spaceUUID.value_or("nil"),
                                      caseName(decision)));
    auto* window = services_.windows.windowFor(tag.id);
    if (!window) return;
    auto& backup = *window->mcBackup();
    const bool shows = decision == TagVisibility::Show;
    if (shows && showsBackups(inputs)) {
        showBackup(*window, backup);
    } else {
        if (shows)
            showWindow(*window, label, inputs.transientReveal);
        else
            hideWindow(*window, label);
        if (!backup.restsAtAlpha(0)) backup.fade(false);
    }
    log(LogCategory::Nav,
        fmt::format("    window α={:#} backup α={:#} frame={} onActiveSpace={}", window->alphaValue(),
                    backup.alphaValue(), describe(window->frame()), window->state().onActiveSpace));
}

const Tag* VisibilityController::firstSeenTag() const {
    const auto& tags = services_.windows.tagsProvider();
    const auto seen = std::ranges::find_if(tags, [this](const Tag& tag) {
        const auto* window = services_.windows.windowFor(tag.id);
        const auto state = window ? window->state() : platform::WindowState();
        return state.visible && state.onActiveSpace;
    });
    return seen == tags.end() ? nullptr : &*seen;
}

void VisibilityController::updateActiveTag() {
    const auto* active =
        firstTagOfSpace(services_.windows.tagsProvider(), services_.spaces.currentSpaceUUID());
    if (!active) active = firstSeenTag();
    const auto id = active ? std::optional(active->id) : std::nullopt;
    if (id == activeTagID_) return;
    activeTagID_ = id;
    changed_.notify();
}

}  // namespace orvellos
