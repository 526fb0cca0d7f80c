#pragma once

#include <string>

#include "orvellos/overview/MissionControlObserver.h"
#include "orvellos/settings/Settings.h"
#include "orvellos/windows/RevealController.h"
#include "platform/Processes.h"
#include "platform/RunLoop.h"

namespace orvellos {

// Shows the tags as Mission Control will before it opens, so that its thumbnails have them, and takes that
// back when it does not open after all. Main thread only.
class MissionControlPreview {
  public:
    struct Services {
        platform::RunLoop& runLoop;
        platform::ApplicationLauncher& launcher;
        Settings& settings;
        MissionControlObserver& missionControl;
        RevealController& reveal;
    };
    explicit MissionControlPreview(const Services& services) : services_(services) {}

    // Mission Control is about to open; `source` says what announces it.
    void preTrigger(const std::string& source);
    // Enlarges the tags and then opens Mission Control.
    void openMCBig();
    // Leaves what is shown as it is.
    void cancelTimers();

  private:
    void show(bool previewed);
    [[nodiscard]] bool isUnopened() const;
    void revertPreTrigger(const std::string& source);
    void launch();
    void revertOpenMCBig();

    Services services_;
    platform::Timer preTriggerRevert_;
    platform::Timer openMCBigStep_;
};

}  // namespace orvellos
