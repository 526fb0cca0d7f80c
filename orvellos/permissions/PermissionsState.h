#pragma once

#include <functional>

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

}  // namespace orvellos
