#include "orvellos/windows/TagEvents.h"

#include <fmt/format.h>

#include <string_view>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

using platform::SessionEvent;

constexpr auto kSpaceChangeDebounce = platform::seconds(0.08);
constexpr auto kSpaceSwitchSuppression = platform::seconds(1);

// The system's own name of the notification.
std::string_view notificationName(SessionEvent event) {
    switch (event) {
        case SessionEvent::SessionDidResignActive:
            return "NSWorkspaceSessionDidResignActiveNotification";
        case SessionEvent::SessionDidBecomeActive:
            return "NSWorkspaceSessionDidBecomeActiveNotification";
        case SessionEvent::ScreensDidSleep:
            return "NSWorkspaceScreensDidSleepNotification";
        case SessionEvent::ScreensDidWake:
            return "NSWorkspaceScreensDidWakeNotification";
        case SessionEvent::WillSleep:
            return "NSWorkspaceWillSleepNotification";
        case SessionEvent::DidWake:
            return "NSWorkspaceDidWakeNotification";
    }
    return {};
}

}  // namespace

void TagEvents::start() {
    following_ = std::make_shared<bool>(true);
    subscriptions_.push_back(
        sources_.spaceNotifications.onActiveSpaceChanged([this] { onActiveSpaceChanged(); }));
    subscriptions_.push_back(sources_.screens.onParametersChanged([this] { onScreenParametersChanged(); }));
    missionControlKey_.start(*this);
    resumePolling();
    subscriptions_.push_back(sources_.session.onEvent([this](SessionEvent event) { onSessionEvent(event); }));
    if (!isSessionOnConsole()) {
        logTimeline("session not on console at launch → MC poll paused");
        targets_.missionControl.pause();
    }
    followSettings();
}

void TagEvents::stop() {
    following_.reset();
    subscriptions_.clear();
    missionControlKey_.stop();
    spaceChangeDebounce_.cancel();
    pausePolling();
}

// Delivers the value, now and whenever it is assigned, from the main queue.
template <typename Value, typename Handler>
void TagEvents::receive(Value& value, Handler handler) {
    subscriptions_.push_back(value.subscribe([this, handler](const auto& assigned) {
        sources_.runLoop.post([weak = std::weak_ptr(following_), handler, assigned] {
            if (weak.lock()) handler(assigned);
        });
    }));
}

void TagEvents::followSettings() {
    auto& settings = sources_.settings;
    auto& missionControl = targets_.missionControl;
    receive(missionControl.isActive(), [this](bool active) { followMissionControl(active); });
    receive(missionControl.swipeTransitionInProgress(),
            [this](bool inProgress) { onSwipeTransition(inProgress); });
    receive(settings.visibilityMode, [this](auto) { targets_.reconciler.reconcile(); });
    receive(settings.killSwitchActive, [this](auto) { targets_.reconciler.reconcile(); });
    receive(sources_.editingContext.isActive(), [this](bool active) {
        log(LogCategory::Nav, fmt::format("SINK: editingContext.isActive={}", active));
        targets_.reconciler.reconcile();
    });
    receive(settings.embiggenAllTags, [this](auto) { targets_.reveal.applySizeAndReconcile(); });
    receive(settings.missionControlStyle, [this](auto) {
        targets_.windows.syncAllMCBackups();
        for (auto* window : targets_.windows.mainWindows()) window->mcBackup()->refreshShape();
    });
    receive(settings.tagSize, [this](auto) { targets_.reveal.applyEffectiveSize(); });
    receive(settings.globalTagShape, [this](auto) { targets_.windows.refreshAllWindowShapes(); });
}

// Spaces and screens.

bool TagEvents::mayRevealOnSwitch() const {
    return sources_.settings.showRevealOnSwipe.get() && !sources_.settings.killSwitchActive.get();
}

void TagEvents::onActiveSpaceChanged() {
    const auto& settings = sources_.settings;
    const bool missionControlActive = targets_.reveal.missionControlActive();
    log(LogCategory::Nav, fmt::format("onActiveSpaceChanged FIRED current={} mode={} kill={} mcActive={}",
                                      targets_.spaces.currentSpaceUUID().value_or("nil"),
                                      rawValue(settings.visibilityMode.get()),
                                      settings.killSwitchActive.get(), missionControlActive));
    targets_.navigation.activeSpaceChanged();
    targets_.missionControl.suppressDetection(kSpaceSwitchSuppression);
    if (mayRevealOnSwitch() && !missionControlActive) targets_.reveal.beginTransientReveal(false);
    spaceChangeDebounce_ = sources_.runLoop.after(kSpaceChangeDebounce, [this] { followSpaceChange(); });
}

void TagEvents::followSpaceChange() {
    targets_.binding.recomputeSpaceOrphans();
    targets_.windows.bringInPlacedWindows();
    targets_.reconciler.reconcile();
    targets_.binding.relocate();
}

void TagEvents::onScreenParametersChanged() {
    logVerbose("screen parameters changed, healing + re-applying size");
    targets_.binding.healOrphanedDetachedTags();
    targets_.reveal.applyEffectiveSize();
    targets_.windows.syncAllMCBackups();
    targets_.binding.scheduleOrphanRecompute();
}

// Mission Control.

void TagEvents::followMissionControl(bool active) {
    logTimeline(fmt::format("SINK: observer.isActive → {}", active));
    if (!active) {
        targets_.binding.scheduleOrphanRecompute();
        targets_.binding.relocate();
    }
    targets_.reveal.setMissionControlActive(active);
    if (!active) {
        if (sources_.settings.embiggenAllTags.get())
            sources_.settings.embiggenAllTags.set(false);
        else
            targets_.reveal.applyEffectiveSize();
    }
    targets_.reconciler.reconcile();
}

void TagEvents::onSwipeTransition(bool inProgress) {
    auto& reveal = targets_.reveal;
    if (!inProgress) {
        reveal.unlockTransientReveal();
    } else if (mayRevealOnSwitch() && !reveal.missionControlActive()) {
        logTimeline("SINK: swipeTransitionInProgress=true → reveal (locked)");
        reveal.beginTransientReveal(true);
    }
}

void TagEvents::reloadKeystrokeObserver() {
    logVerbose("TagManager: reloading keystroke observer");
    missionControlKey_.stop();
    missionControlKey_.start(*this);
}

void TagEvents::onMissionControl() {
    targets_.preview.preTrigger("keystroke");
}

void TagEvents::onSpaceSwitch() {
    targets_.missionControl.suppressDetection(kSpaceSwitchSuppression);
    if (!mayRevealOnSwitch()) return;
    logVerbose("space-switch keystroke: pre-reveal");
    targets_.reveal.beginTransientReveal(false);
}

// Session and sleep.

bool TagEvents::isSessionOnConsole() const {
    return sources_.session.isOnConsole().value_or(true);
}

void TagEvents::pausePolling() {
    targets_.missionControl.pause();
    targets_.clickThrough.stop();
}

void TagEvents::resumePolling() {
    targets_.missionControl.pause();
    targets_.missionControl.start();
    targets_.clickThrough.stop();
    if (sources_.windowSystem.takesClicksOnOutlineOnly()) return;
    targets_.clickThrough.start(ClickThroughController::kIdleHz);
    targets_.clickThrough.tick();
}

void TagEvents::onSessionEvent(SessionEvent event) {
    if (event == SessionEvent::SessionDidResignActive) {
        logTimeline("session resigned active → pausing MC poll");
        pausePolling();
    } else if (event == SessionEvent::SessionDidBecomeActive) {
        logTimeline("session became active → resuming MC poll");
        resumePolling();
        targets_.reconciler.reconcile();
    } else if (event == SessionEvent::ScreensDidSleep || event == SessionEvent::WillSleep) {
        logTimeline(fmt::format("{} → pausing polling", notificationName(event)));
        pausePolling();
    } else if (isSessionOnConsole()) {
        logTimeline(fmt::format("{} → resuming polling", notificationName(event)));
        resumePolling();
        targets_.reconciler.reconcile();
    }
}

}  // namespace orvellos
