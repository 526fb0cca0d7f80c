#include "orvellos/permissions/PermissionRow.h"

#include <utility>

namespace orvellos {

namespace {

constexpr auto kRefreshInterval = platform::seconds(1);
constexpr auto kRefreshTolerance = platform::seconds(0.1);
constexpr auto kAnswerDelay = platform::seconds(1);

}  // namespace

PermissionsState::PermissionsState(Services services)
    : services_(std::move(services)),
      accessibilityTrusted_(services_.permissions.checkAccessibility()),
      inputMonitoringTrusted_(services_.permissions.checkInputMonitoring()) {}

void PermissionsState::refresh() {
    const bool accessibility = services_.permissions.checkAccessibility();
    const bool inputMonitoring = services_.permissions.checkInputMonitoring();
    const bool isNewlyGranted =
        (accessibility && !accessibilityTrusted_) || (inputMonitoring && !inputMonitoringTrusted_);
    accessibilityTrusted_ = accessibility;
    inputMonitoringTrusted_ = inputMonitoring;
    refreshed_.notify();
    if (isNewlyGranted) reloadKeystrokeObserver();
}

void PermissionsState::startRefreshing() {
    timer_ = services_.runLoop.every(kRefreshInterval, kRefreshTolerance, [this] { refresh(); });
}

void PermissionsState::requestAccessibility() {
    services_.permissions.promptAccessibility();
    refresh();
}

void PermissionsState::requestInputMonitoring() {
    answer_ = services_.permissions.requestInputMonitoring([this] { refresh(); }, kAnswerDelay);
}

std::string PermissionRow::title() const {
    return permission_ == Permission::InputMonitoring ? "Input Monitoring" : "Accessibility";
}

bool PermissionRow::isGranted() const {
    return permission_ == Permission::InputMonitoring ? state_->inputMonitoringTrusted()
                                                      : state_->accessibilityTrusted();
}

void PermissionRow::request() const {
    if (permission_ == Permission::InputMonitoring)
        state_->requestInputMonitoring();
    else
        state_->requestAccessibility();
}

void PermissionRow::openSettings() const {
    if (permission_ == Permission::InputMonitoring)
        permissions_->openInputMonitoringSettings();
    else
        permissions_->openAccessibilitySettings();
}

}  // namespace orvellos
