#include "orvellos/permissions/PermissionRow.h"

#include <utility>

namespace orvellos {

PermissionsState::PermissionsState(const PrivacyPermissions& permissions, platform::RunLoop& runLoop,
                                   std::function<void()> reloadKeystrokeObserver)
    : accessibilityTrusted(permissions.checkAccessibility()),
      inputMonitoringTrusted(permissions.checkInputMonitoring()),
      permissions_(permissions),
      runLoop_(runLoop),
      reloadKeystrokeObserver_(std::move(reloadKeystrokeObserver)) {}

void PermissionsState::refresh() {
    const bool accessibility = permissions_.checkAccessibility();
    const bool inputMonitoring = permissions_.checkInputMonitoring();
    const bool isNewlyGranted =
        (accessibility && !accessibilityTrusted.get()) || (inputMonitoring && !inputMonitoringTrusted.get());
    accessibilityTrusted.set(accessibility);
    inputMonitoringTrusted.set(inputMonitoring);
    if (isNewlyGranted) reloadKeystrokeObserver_();
}

void PermissionsState::startRefreshing() {
    timer_ = runLoop_.every(platform::seconds(1), platform::seconds(0.1), [this] { refresh(); });
}

namespace {

constexpr auto kTimeToAnswer = platform::seconds(1);

}  // namespace

PermissionRow inputMonitoringRow(const PermissionTargets& targets, std::string text,
                                 std::string requestTitle) {
    auto& permissions = targets.permissions;
    const auto request = [&permissions, shown = std::weak_ptr(targets.state)] {
        permissions.requestInputMonitoring(
            [shown] {
                if (const auto state = shown.lock()) state->refresh();
            },
            kTimeToAnswer);
    };
    return {.title = "Input Monitoring",
            .text = std::move(text),
            .requestTitle = std::move(requestTitle),
            .isGranted = [state = targets.state] { return state->inputMonitoringTrusted.get(); },
            .request = request,
            .openSettings = [&permissions] { permissions.openInputMonitoringSettings(); },
            .reload = targets.reloadKeystrokeObserver};
}

PermissionRow accessibilityRow(const PermissionTargets& targets, std::string text, std::string requestTitle) {
    auto& permissions = targets.permissions;
    const auto request = [&permissions, state = targets.state] {
        permissions.promptAccessibility();
        state->refresh();
    };
    return {.title = "Accessibility",
            .text = std::move(text),
            .requestTitle = std::move(requestTitle),
            .isGranted = [state = targets.state] { return state->accessibilityTrusted.get(); },
            .request = request,
            .openSettings = [&permissions] { permissions.openAccessibilitySettings(); },
            .reload = targets.reloadKeystrokeObserver};
}

}  // namespace orvellos
