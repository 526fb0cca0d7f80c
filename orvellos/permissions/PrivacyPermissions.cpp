#include "orvellos/permissions/PrivacyPermissions.h"

#include <array>
#include <utility>

#include "orvellos/spaces/NavController.h"

namespace orvellos {

namespace {

constexpr auto kPolicyRestoreDelay = platform::seconds(0.25);
constexpr std::string_view kInputMonitoringUrl =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent";

}  // namespace

bool PrivacyPermissions::promptAccessibility() {
    if (!checkAccessibility()) services_.permissions.promptAccessibility();
    return checkAccessibility();
}

// The system attaches a prompt only to an application that can come to the front, so this one can for a
// moment.
bool PrivacyPermissions::requestInputMonitoring() {
    if (checkInputMonitoring()) return true;
    auto& activation = services_.activation;
    if (!policyBefore_) policyBefore_ = activation.policy();
    activation.setPolicy(platform::ActivationPolicy::Regular);
    activation.activate();
    services_.permissions.requestInputMonitoring();
    policyRestore_ = services_.runLoop.after(kPolicyRestoreDelay, [this] {
        services_.activation.setPolicy(*std::exchange(policyBefore_, std::nullopt));
    });
    return checkInputMonitoring();
}

platform::Subscription PrivacyPermissions::requestInputMonitoring(std::function<void()> completion,
                                                                  platform::Duration delay) {
    requestInputMonitoring();
    platform::Observers<> answered;
    auto subscription = answered.subscribe(std::move(completion));
    followUp_ = services_.runLoop.after(delay, [this, answered] {
        answered.notify();
        if (checkInputMonitoring()) return;
        openInputMonitoringSettings();
        revealAppInFinder();
    });
    return subscription;
}

void PrivacyPermissions::openAccessibilitySettings() {
    services_.urls.openUrl(settingsUrl(NavRemedy::Accessibility));
}

void PrivacyPermissions::openInputMonitoringSettings() {
    services_.urls.openUrl(kInputMonitoringUrl);
}

void PrivacyPermissions::relaunch() {
    const std::array<std::string, 2> arguments = {"-n", services_.bundle.path.string()};
    (void)services_.processes.run("/usr/bin/open", arguments);
    services_.terminate();
}

bool PrivacyPermissions::resetPrivacy(std::span<const std::string> services) {
    if (services_.bundle.identifier.empty()) return false;
    bool succeeded = true;
    for (const auto& service : services) {
        const std::array<std::string, 3> arguments = {"reset", service, services_.bundle.identifier};
        if (services_.processes.run("/usr/bin/tccutil", arguments) != 0) succeeded = false;
    }
    return succeeded;
}

void PrivacyPermissions::confirmReset() {
    services_.alerts.runModal(
        {.message = "Reset orvellos' privacy permissions?",
         .informativeText = "Removes orvellos' entries from Input Monitoring and Accessibility, then "
                            "relaunches the app so you can grant them cleanly.",
         .buttons = {"Reset & Restart", "Cancel"},
         .style = platform::Alert::Style::Informational},
        [this](std::size_t button) {
            if (button != 0) return;
            const std::array<std::string, 2> services = {"ListenEvent", "Accessibility"};
            (void)resetPrivacy(services);
            relaunch();
        });
}

}  // namespace orvellos
