#pragma once

#include <functional>
#include <memory>
#include <string>

#include "orvellos/permissions/PermissionsState.h"

namespace orvellos {

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
