// The events that a tag manager follows, and what each sets off.

#include <fmt/format.h>

#include "orvellos/base/DebugLog.h"
#include "orvellos/overview/MissionControlLauncher.h"
#include "orvellos/windows/TagManager.h"

namespace orvellos {

namespace {

using platform::SessionEvent;

constexpr auto kSpaceChangeDebounce = platform::seconds(0.08);
constexpr auto kSpaceSwitchSuppression = platform::seconds(1);
constexpr auto kPreTriggerRevert = platform::seconds(0.15);
constexpr auto kBigTagsAreDrawn = platform::seconds(0.04);
constexpr auto kOpenMCBigRevert = platform::seconds(2);

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

void TagManager::start() {
    subscriptions_.push_back(binding_.orphanedTagIDs().subscribe([this](const auto&) { changed_.notify(); }));
    for (const auto& tag : tags()) makeWindow(tag);
    binding_.recomputeSpaceOrphans();
    hideFromTheStart();
    bringInPlacedWindows();
    for (const auto& tag : tags()) sendHome(tag);
    binding_.relocate();
    observe();
    reconcile();
}

void TagManager::stop() {
    following_.reset();
    subscriptions_.clear();
    missionControl_.pause();
    missionControlKey_.stop();
    clickThrough_.stop();
    navigation_.cancel();
    reveal_.cancelTimers();
    binding_.cancelTimers();
    spaceChangeDebounce_.cancel();
    preTriggerRevert_.cancel();
    openMCBigStep_.cancel();
}

void TagManager::observe() {
    following_ = std::make_shared<bool>(true);
    subscriptions_.push_back(
        services_.spaceNotifications.onActiveSpaceChanged([this] { onActiveSpaceChanged(); }));
    subscriptions_.push_back(services_.screens.onParametersChanged([this] { onScreenParametersChanged(); }));
    startKeystrokeObserver();
    resumePolling();
    subscriptions_.push_back(
        services_.session.onEvent([this](SessionEvent event) { onSessionEvent(event); }));
    if (!isSessionOnConsole()) {
        logTimeline("session not on console at launch → MC poll paused");
        missionControl_.pause();
    }
    observeSettings();
}

// Delivers the value, now and whenever it is assigned, from the main queue.
template <typename Value, typename Handler>
void TagManager::receive(Value& value, Handler handler) {
    subscriptions_.push_back(value.subscribe([this, handler](const auto& assigned) {
        runLoop_.post([weak = std::weak_ptr(following_), handler, assigned] {
            if (weak.lock()) handler(assigned);
        });
    }));
}

void TagManager::observeSettings() {
    receive(missionControl_.isActive(), [this](bool active) { onMissionControl(active); });
    receive(missionControl_.swipeTransitionInProgress(),
            [this](bool inProgress) { onSwipeTransition(inProgress); });
    receive(settings_.visibilityMode, [this](auto) { reconcile(); });
    receive(settings_.killSwitchActive, [this](auto) { reconcile(); });
    receive(services_.windows.editingContext.isActive(), [this](bool active) {
        log(LogCategory::Nav, fmt::format("SINK: editingContext.isActive={}", active));
        reconcile();
    });
    receive(settings_.embiggenAllTags, [this](auto) { applySizeAndReconcile(); });
    receive(settings_.missionControlStyle, [this](auto) {
        syncAllMCBackups();
        for (auto* window : mainWindows()) window->mcBackup()->refreshShape();
    });
    receive(settings_.tagSize, [this](auto) { reveal_.applyEffectiveSize(); });
    receive(settings_.globalTagShape, [this](auto) { refreshAllWindowShapes(); });
}

void TagManager::applySizeAndReconcile() {
    reveal_.applyEffectiveSize();
    reconcile();
}

// Spaces and screens.

bool TagManager::mayRevealOnSwitch() const {
    return settings_.showRevealOnSwipe.get() && !settings_.killSwitchActive.get();
}

void TagManager::onActiveSpaceChanged() {
    log(LogCategory::Nav, fmt::format("onActiveSpaceChanged FIRED current={} mode={} kill={} mcActive={}",
                                      services_.spaces.currentSpaceUUID().value_or("nil"),
                                      rawValue(settings_.visibilityMode.get()),
                                      settings_.killSwitchActive.get(), reveal_.missionControlActive));
    navigation_.activeSpaceChanged();
    missionControl_.suppressDetection(kSpaceSwitchSuppression);
    if (mayRevealOnSwitch() && !reveal_.missionControlActive) reveal_.beginTransientReveal(false);
    spaceChangeDebounce_ = runLoop_.after(kSpaceChangeDebounce, [this] {
        binding_.recomputeSpaceOrphans();
        bringInPlacedWindows();
        reconcile();
        binding_.relocate();
    });
}

void TagManager::onScreenParametersChanged() {
    logVerbose("screen parameters changed, healing + re-applying size");
    binding_.healOrphanedDetachedTags();
    reveal_.applyEffectiveSize();
    syncAllMCBackups();
    binding_.scheduleOrphanRecompute();
}

// Mission Control.

bool TagManager::missionControlRecentlyActive() {
    return missionControl_.isActive().get() || mcGate_.wasActiveRecently(runLoop_.now());
}

void TagManager::onMissionControl(bool active) {
    logTimeline(fmt::format("SINK: observer.isActive → {}", active));
    mcGate_.update(active, runLoop_.now());
    if (!active) {
        binding_.scheduleOrphanRecompute();
        binding_.relocate();
    }
    reveal_.missionControlActive = active;
    if (!active) {
        if (settings_.embiggenAllTags.get())
            settings_.embiggenAllTags.set(false);
        else
            reveal_.applyEffectiveSize();
    }
    reconcile();
}

void TagManager::onSwipeTransition(bool inProgress) {
    if (!inProgress) {
        reveal_.unlockTransientReveal();
    } else if (mayRevealOnSwitch() && !reveal_.missionControlActive) {
        logTimeline("SINK: swipeTransitionInProgress=true → reveal (locked)");
        reveal_.beginTransientReveal(true);
    }
}

void TagManager::startKeystrokeObserver() {
    missionControlKey_.start([this] { preTrigger("keystroke"); }, [this] { onSpaceSwitchKeystroke(); });
}

void TagManager::reloadKeystrokeObserver() {
    logVerbose("TagManager: reloading keystroke observer");
    missionControlKey_.stop();
    startKeystrokeObserver();
}

void TagManager::onSpaceSwitchKeystroke() {
    missionControl_.suppressDetection(kSpaceSwitchSuppression);
    if (!mayRevealOnSwitch()) return;
    logVerbose("space-switch keystroke: pre-reveal");
    reveal_.beginTransientReveal(false);
}

void TagManager::preTrigger(const std::string& source) {
    const auto say = [&](const std::string& text) {
        logTimeline(fmt::format("PRE-TRIGGER[{}]: {}", source, text));
    };
    if (missionControl_.isPolling()) missionControl_.expectChange();
    if (reveal_.missionControlActive) return say("skip (MC already active)");
    if (missionControl_.isSuppressed())
        return say("skip (MC detection suppressed — likely space-switch keystroke)");
    logVerbose("MC pre-trigger from {}: pre-resize before snapshot", source);
    say("setting MC=true + applyEffectiveSize");
    reveal_.missionControlActive = true;
    applySizeAndReconcile();
    say("done");
    preTriggerRevert_ = runLoop_.after(kPreTriggerRevert, [this, source] {
        if (!reveal_.missionControlActive || missionControl_.isActive().get()) return;
        logVerbose("MC pre-trigger[{}] revert: MC never opened", source);
        logTimeline(fmt::format("SAFETY-REVERT[{}]: MC never opened in 150ms", source));
        reveal_.missionControlActive = false;
        applySizeAndReconcile();
    });
}

void TagManager::openMCBig() {
    logTimeline("openMCBig: pre-resize + force show, then launch MC");
    preTriggerRevert_.cancel();
    reveal_.missionControlActive = true;
    settings_.embiggenAllTags.set(true);
    applySizeAndReconcile();
    openMCBigStep_ = runLoop_.after(kBigTagsAreDrawn, [this] { launchBigMissionControl(); });
}

void TagManager::launchBigMissionControl() {
    logTimeline("openMCBig: launching Mission Control");
    launchMissionControl(services_.launcher);
    openMCBigStep_ = runLoop_.after(kOpenMCBigRevert, [this] {
        if (!reveal_.missionControlActive || missionControl_.isActive().get()) return;
        logTimeline("openMCBig: SAFETY-REVERT (MC never opened)");
        reveal_.missionControlActive = false;
        settings_.embiggenAllTags.set(false);
        applySizeAndReconcile();
    });
}

// Peeking.

void TagManager::peekBegin() {
    if (settings_.killSwitchActive.get()) {
        logTimeline("peek: suppressed (kill switch active)");
        return;
    }
    logTimeline("peek: begin (hold)");
    reveal_.beginTransientReveal(true);
}

void TagManager::peekEnd() {
    reveal_.unlockTransientReveal(RevealController::kAfterPeek);
}

void TagManager::peek() {
    peekBegin();
    peekEnd();
}

// Session and sleep.

bool TagManager::isSessionOnConsole() const {
    return services_.session.isOnConsole().value_or(true);
}

void TagManager::pausePolling() {
    missionControl_.pause();
    clickThrough_.stop();
}

void TagManager::resumePolling() {
    missionControl_.pause();
    missionControl_.start();
    clickThrough_.stop();
    if (services_.windows.windowSystem.takesClicksOnOutlineOnly()) return;
    clickThrough_.start(ClickThroughController::kIdleHz);
    clickThrough_.tick();
}

void TagManager::onSessionEvent(SessionEvent event) {
    if (event == SessionEvent::SessionDidResignActive) {
        logTimeline("session resigned active → pausing MC poll");
        pausePolling();
    } else if (event == SessionEvent::SessionDidBecomeActive) {
        logTimeline("session became active → resuming MC poll");
        resumePolling();
        reconcile();
    } else if (event == SessionEvent::ScreensDidSleep || event == SessionEvent::WillSleep) {
        logTimeline(fmt::format("{} → pausing polling", notificationName(event)));
        pausePolling();
    } else if (isSessionOnConsole()) {
        logTimeline(fmt::format("{} → resuming polling", notificationName(event)));
        resumePolling();
        reconcile();
    }
}

}  // namespace orvellos
