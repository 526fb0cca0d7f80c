#include "orvellos/windows/MissionControlPreview.h"

#include <fmt/format.h>

#include "orvellos/base/DebugLog.h"
#include "orvellos/overview/MissionControlLauncher.h"

namespace orvellos {

namespace {

constexpr auto kPreTriggerRevertDelay = platform::seconds(0.15);
constexpr auto kLaunchDelay = platform::seconds(0.04);  // the big tags are drawn by then
constexpr auto kOpenMCBigRevertDelay = platform::seconds(2);

}  // namespace

void MissionControlPreview::preTrigger(const std::string& source) {
    const auto say = [&](const std::string& text) {
        logTimeline(fmt::format("PRE-TRIGGER[{}]: {}", source, text));
    };
    auto& missionControl = services_.missionControl;
    if (missionControl.isPolling()) missionControl.expectChange();
    if (services_.reveal.missionControlActive()) return say("skip (MC already active)");
    if (missionControl.isSuppressed())
        return say("skip (MC detection suppressed — likely space-switch keystroke)");
    logVerbose("MC pre-trigger from {}: pre-resize before snapshot", source);
    say("setting MC=true + applyEffectiveSize");
    show(true);
    say("done");
    preTriggerRevert_ =
        services_.runLoop.after(kPreTriggerRevertDelay, [this, source] { revertPreTrigger(source); });
}

void MissionControlPreview::openMCBig() {
    logTimeline("openMCBig: pre-resize + force show, then launch MC");
    preTriggerRevert_.cancel();
    services_.reveal.setMissionControlActive(true);
    services_.settings.embiggenAllTags.set(true);
    services_.reveal.applySizeAndReconcile();
    openMCBigStep_ = services_.runLoop.after(kLaunchDelay, [this] { launch(); });
}

void MissionControlPreview::launch() {
    logTimeline("openMCBig: launching Mission Control");
    launchMissionControl(services_.launcher);
    openMCBigStep_ = services_.runLoop.after(kOpenMCBigRevertDelay, [this] { revertOpenMCBig(); });
}

void MissionControlPreview::show(bool previewed) {
    services_.reveal.setMissionControlActive(previewed);
    services_.reveal.applySizeAndReconcile();
}

bool MissionControlPreview::isUnopened() const {
    return services_.reveal.missionControlActive() && !services_.missionControl.isActive().get();
}

void MissionControlPreview::revertPreTrigger(const std::string& source) {
    if (!isUnopened()) return;
    logVerbose("MC pre-trigger[{}] revert: MC never opened", source);
    logTimeline(fmt::format("SAFETY-REVERT[{}]: MC never opened in 150ms", source));
    show(false);
}

void MissionControlPreview::revertOpenMCBig() {
    if (!isUnopened()) return;
    logTimeline("openMCBig: SAFETY-REVERT (MC never opened)");
    services_.reveal.setMissionControlActive(false);
    services_.settings.embiggenAllTags.set(false);
    services_.reveal.applySizeAndReconcile();
}

void MissionControlPreview::cancelTimers() {
    preTriggerRevert_.cancel();
    openMCBigStep_.cancel();
}

}  // namespace orvellos
