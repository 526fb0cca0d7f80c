#pragma once

#include <vector>

#include "platform/OnScreenWindows.h"
#include "platform/OverviewSource.h"
#include "platform/Screens.h"

namespace platform::freedesktop {

// The desktop's overview as the application knows it: while one is open, a window of the Dock is on the
// screen, as large as the main screen. Other windows are not in the list.
class DesktopOverview final : public OnScreenWindows {
  public:
    // What is passed outlives this object.
    DesktopOverview(const Screens& screens, std::vector<const OverviewSource*> sources);

    [[nodiscard]] std::optional<std::vector<OnScreenWindow>> copyOnScreenWindows() const override;

  private:
    const Screens& screens_;
    std::vector<const OverviewSource*> sources_;
};

}  // namespace platform::freedesktop
