#include "orvellos/panels/AutoDismiss.h"

#include <utility>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

void say(const std::string& message) {
    log(LogCategory::Nav, message);
}

}  // namespace

AutoDismiss::AutoDismiss(Surroundings surroundings, std::string title, std::function<void()> dismiss)
    : surroundings_(std::move(surroundings)), title_(std::move(title)), dismiss_(std::move(dismiss)) {
    say("attachAutoDismiss INSTALL for '" + title_ + "'");
    localMonitor_ = surroundings_.mouse.addLocalMouseDownMonitor(
        [this](platform::WindowNumber window) { localMouseDown(window); });
    globalMonitor_ = surroundings_.mouse.addGlobalMouseDownMonitor([this] { globalMouseDown(); });
}

AutoDismiss::~AutoDismiss() {
    if (dismiss_) say("willCloseNotification for '" + title_ + "' — cleaning up monitors");
}

bool AutoDismiss::isColorPanelActive() {
    const auto now = surroundings_.runLoop.now();
    if (surroundings_.isColorPanelVisible()) colorPanelSeen_ = now;
    return colorPanelSeen_ && now - *colorPanelSeen_ < kAfterColorPanel;
}

void AutoDismiss::localMouseDown(platform::WindowNumber window) {
    if (isColorPanelActive()) return say("  color panel active → keep (eyedropper / color pick)");
    const auto clicked = surroundings_.identify(window);
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
    const auto dismiss = std::exchange(dismiss_, nullptr);
    dismiss();
}

}  // namespace orvellos
