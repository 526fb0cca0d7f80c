#include "orvellos/PermissionRow.h"

#include <utility>

namespace orvellos {

namespace {

constexpr auto kTimeToAnswer = platform::seconds(1);

}  // namespace

PermissionRow inputMonitoringRow(const PermissionTargets& targets, std::string text,
                                 std::string requestTitle) {
    auto& permissions = targets.permissions;
    const auto& state = targets.state;
    return {.title = "Input Monitoring",
            .text = std::move(text),
            .requestTitle = std::move(requestTitle),
            .isGranted = [state] { return state->inputMonitoringTrusted.get(); },
            .request =
                [&permissions, shown = std::weak_ptr(state)] {
                    permissions.requestInputMonitoring(
                        [shown] {
                            if (const auto stillShown = shown.lock()) stillShown->refresh();
                        },
                        kTimeToAnswer);
                },
            .openSettings = [&permissions] { permissions.openInputMonitoringSettings(); },
            .reload = targets.reloadKeystrokeObserver};
}

PermissionRow accessibilityRow(const PermissionTargets& targets, std::string text, std::string requestTitle) {
    auto& permissions = targets.permissions;
    const auto& state = targets.state;
    return {.title = "Accessibility",
            .text = std::move(text),
            .requestTitle = std::move(requestTitle),
            .isGranted = [state] { return state->accessibilityTrusted.get(); },
            .request =
                [&permissions, state] {
                    permissions.promptAccessibility();
                    state->refresh();
                },
            .openSettings = [&permissions] { permissions.openAccessibilitySettings(); },
            .reload = targets.reloadKeystrokeObserver};
}

}  // namespace orvellos
