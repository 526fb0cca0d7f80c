#include "orvellos/permissions/PermissionsState.h"

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

}  // namespace orvellos
