#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "platform/Files.h"
#include "platform/Panels.h"
#include "platform/Processes.h"
#include "platform/RunLoop.h"
#include "platform/Session.h"
#include "platform/System.h"

namespace orvellos {

// The application as the system knows it.
struct ApplicationBundle {
    std::string identifier;      // empty when the system does not say
    std::filesystem::path path;  // what the user starts it by
};

// The optional permissions: the checks, the requests to the user, and the ways out when a request leads
// nowhere. Main thread only.
class PrivacyPermissions {
  public:
    struct Services {
        platform::Permissions& permissions;
        platform::ApplicationActivation& activation;
        platform::UrlOpener& urls;
        platform::FileBrowser& fileBrowser;
        platform::ChildProcesses& processes;
        platform::Alerts& alerts;
        platform::RunLoop& runLoop;
        ApplicationBundle bundle;
        std::function<void()> terminate;  // ends this application
    };
    explicit PrivacyPermissions(Services services) : services_(std::move(services)) {}

    [[nodiscard]] bool checkAccessibility() const { return services_.permissions.isAccessibilityTrusted(); }
    [[nodiscard]] bool checkInputMonitoring() const {
        return services_.permissions.isInputMonitoringTrusted();
    }
    // Both ask the user unless the permission is granted. True when it is granted at once.
    bool promptAccessibility();
    bool requestInputMonitoring();
    // The same; after the delay calls `completion`, unless the subscription has ended, and then helps a user
    // who saw no prompt: shows the list of the permission and, for adding it there, the application. The
    // latest request alone is followed up.
    platform::Subscription requestInputMonitoring(std::function<void()> completion, platform::Duration delay);

    void openAccessibilitySettings();
    void openInputMonitoringSettings();
    void revealAppInFinder() { services_.fileBrowser.reveal(services_.bundle.path); }

    // Starts the application anew and ends this one, even when the start fails.
    void relaunch();
    // Takes the application out of the lists of those privacy services, one after the other. Waits; false
    // when one failed.
    bool resetPrivacy(std::span<const std::string> services);
    // Lets the user confirm that both permissions are to be reset and the application started anew.
    void confirmReset();

  private:
    Services services_;
    platform::Timer followUp_;
    platform::Timer policyRestore_;
    std::optional<platform::ActivationPolicy> policyBefore_;  // while a request has changed it
};

}  // namespace orvellos
