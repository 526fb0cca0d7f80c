#pragma once

#include <functional>
#include <memory>
#include <string>

#include "orvellos/base/Published.h"
#include "orvellos/permissions/PrivacyPermissions.h"

namespace orvellos {

// What is granted, for a view that shows it. Main thread only.
class PermissionsState {
  public:
    // Starts with what is granted now. `reloadKeystrokeObserver` is called when something becomes granted,
    // so that keys arrive without a restart. What is passed outlives the state.
    PermissionsState(const PrivacyPermissions& permissions, platform::RunLoop& runLoop,
                     std::function<void()> reloadKeystrokeObserver);

    Published<bool> accessibilityTrusted;
    Published<bool> inputMonitoringTrusted;

    void refresh();
    // Refreshes every second, while the view is on the screen.
    void startRefreshing();
    void stopRefreshing() { timer_.cancel(); }

  private:
    const PrivacyPermissions& permissions_;
    platform::RunLoop& runLoop_;
    std::function<void()> reloadKeystrokeObserver_;
    platform::Timer timer_;
};

// A permission as the user sees it. In the texts, what is between two asterisks each is emphasised and what
// is between two backticks is a name of the system's.
struct PermissionRow {
    static constexpr const char* kGrantedSymbol = "checkmark.circle.fill";
    static constexpr const char* kMissingSymbol = "circle.dashed";
    static constexpr const char* kGranted = "Granted";
    static constexpr const char* kReload = "Reload";
    static constexpr const char* kReloadHelp = "Re-install the keystroke observer without restarting the app";
    static constexpr const char* kOpenSettings = "Open Settings";
    static constexpr const char* kReveal = "Reveal App in Finder";

    std::string title;
    std::string text;
    std::string requestTitle;
    std::string hint = {};  // for a user who was asked nothing; empty for none
    std::function<bool()> isGranted;
    std::function<void()> request;
    std::function<void()> openSettings;
    std::function<void()> reload;
    std::function<void()> reveal = {};  // stands with the hint
};

// What both windows' rows act upon. The permissions outlive the rows.
struct PermissionTargets {
    PrivacyPermissions& permissions;
    std::shared_ptr<PermissionsState> state;
    std::function<void()> reloadKeystrokeObserver;
};

[[nodiscard]] PermissionRow inputMonitoringRow(const PermissionTargets& targets, std::string text,
                                               std::string requestTitle);
[[nodiscard]] PermissionRow accessibilityRow(const PermissionTargets& targets, std::string text,
                                             std::string requestTitle);

}  // namespace orvellos
