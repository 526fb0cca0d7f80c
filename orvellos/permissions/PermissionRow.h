#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "orvellos/permissions/PrivacyPermissions.h"

namespace orvellos {

// Which permissions are granted, for one view that shows them. The form of that view owns the state, which
// nobody else changes. Main thread only.
class PermissionsState {
  public:
    struct Services {
        PrivacyPermissions& permissions;
        platform::RunLoop& runLoop;
        // Lets keys arrive without a restart.
        std::function<void()> reloadKeystrokeObserver;
    };
    explicit PermissionsState(Services services);
    PermissionsState(const PermissionsState&) = delete;
    PermissionsState& operator=(const PermissionsState&) = delete;

    [[nodiscard]] bool accessibilityTrusted() const { return accessibilityTrusted_; }
    [[nodiscard]] bool inputMonitoringTrusted() const { return inputMonitoringTrusted_; }
    // Called at every refresh.
    platform::Subscription subscribe(std::function<void()> callback) {
        return refreshed_.subscribe(std::move(callback));
    }

    // Reads both permissions. Reloads the keystroke observer when one has become granted.
    void refresh();
    // Refreshes every second, while the view is on the screen.
    void startRefreshing();
    void stopRefreshing() { timer_.cancel(); }

    // Both ask the user, and refresh once there can be an answer.
    void requestAccessibility();
    void requestInputMonitoring();
    void reloadKeystrokeObserver() const { services_.reloadKeystrokeObserver(); }

  private:
    Services services_;
    bool accessibilityTrusted_;
    bool inputMonitoringTrusted_;
    platform::Observers<> refreshed_;
    platform::Timer timer_;
    platform::Subscription answer_;
};

// A permission as both windows show it: its texts, and the operations of its buttons. In the texts, **two
// asterisks** enclose emphasised words and `backticks` names of the system's.
class PermissionRow {
  public:
    static constexpr const char* kGrantedSymbol = "checkmark.circle.fill";
    static constexpr const char* kMissingSymbol = "circle.dashed";
    static constexpr const char* kGranted = "Granted";
    static constexpr const char* kReload = "Reload";
    static constexpr const char* kReloadHelp = "Re-install the keystroke observer without restarting the app";
    static constexpr const char* kOpenSettings = "Open Settings";
    static constexpr const char* kReveal = "Reveal App in Finder";

    enum class Permission { InputMonitoring, Accessibility };
    struct Texts {
        std::string text;
        std::string requestTitle;
        std::string hint =
            {};  // for a user who was asked nothing, beside the button to reveal; empty for none
    };
    PermissionRow(Permission permission, Texts texts, PrivacyPermissions& permissions,
                  PermissionsState& state)
        : permission_(permission), texts_(std::move(texts)), permissions_(&permissions), state_(&state) {}

    [[nodiscard]] std::string title() const;
    [[nodiscard]] const Texts& texts() const { return texts_; }
    [[nodiscard]] bool isGranted() const;

    void request() const;
    void openSettings() const;
    void reload() const { state_->reloadKeystrokeObserver(); }
    void reveal() const { permissions_->revealAppInFinder(); }

  private:
    Permission permission_;
    Texts texts_;
    PrivacyPermissions* permissions_;
    PermissionsState* state_;
};

}  // namespace orvellos
