#pragma once

#include "orvellos/panels/Toasts.h"
#include "platform/Panels.h"
#include "platform/System.h"

namespace orvellos {

// Looks for newer versions when the user asks. A system updater that cannot be started is reported only then.
class Updater {
  public:
    // Starts the service once.
    Updater(platform::UpdateService& service, platform::Alerts& alerts, WaitingNote& note);

    // Shows the note until the answer comes, and then the answer.
    void checkForUpdates();

  private:
    void start();
    void finishCheck();
    void tell(const platform::UpdateAnswer& answer);

    platform::UpdateService& service_;
    platform::Alerts& alerts_;
    WaitingNote& note_;
    platform::MaybeError lastStartError_;
    bool isStarting_ = false;
    bool isAskedFor_ = false;  // while it starts
};

}  // namespace orvellos
