#include "orvellos/panels/AutoDismiss.h"

#include <utility>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

void say(const std::string& message) {
    log(LogCategory::Nav, message);
}

}  // namespace

AutoDismiss::AutoDismiss(platform::MouseMonitor& mouse, platform::RunLoop& runLoop, std::string title,
                         Owner& owner)
    : runLoop_(runLoop), title_(std::move(title)), owner_(owner) {
    say("attachAutoDismiss INSTALL for '" + title_ + "'");
    localMonitor_ =
        mouse.addLocalMouseDownMonitor([this](platform::WindowNumber window) { localMouseDown(window); });
    globalMonitor_ = mouse.addGlobalMouseDownMonitor([this] { globalMouseDown(); });
}

AutoDismiss::~AutoDismiss() {
    if (!hasFired_) say("willCloseNotification for '" + title_ + "' — cleaning up monitors");
}

bool AutoDismiss::isColorPanelActive() {
    const auto now = runLoop_.now();
    if (owner_.isColorPanelVisible()) colorPanelSeen_ = now;
    return colorPanelSeen_ && now - *colorPanelSeen_ < kColorPanelGrace;
}

void AutoDismiss::localMouseDown(platform::WindowNumber window) {
    if (isColorPanelActive()) return say("  color panel active → keep (eyedropper / color pick)");
    const auto clicked = owner_.identify(window);
    say("localMonitor mouseDown in '" + title_ + "': window=" + clicked.title.value_or("nil"));
    switch (clicked.kind) {
        case WindowKind::ThisPanel:
            return say("  on panel → keep");
        case WindowKind::TagWindow:
            return say("  on TagWindow → keep (let tag toggle)");
        case WindowKind::SiblingPanel:
            return say("  on sibling panel → keep");
        case WindowKind::Other:
            say("  outside → dismiss");
            fire();
    }
}

void AutoDismiss::globalMouseDown() {
    if (isColorPanelActive())
        return say("globalMonitor mouseDown but color panel active → keep (eyedropper)");
    say("globalMonitor mouseDown in another app → dismiss");
    fire();
}

void AutoDismiss::fire() {
    say("autoDismiss FIRE for '" + title_ + "'");
    localMonitor_.cancel();
    globalMonitor_.cancel();
    hasFired_ = true;
    owner_.dismiss();
}

}  // namespace orvellos
