#pragma once

#include <utility>
#include <vector>

#include "platform/OnScreenWindows.h"
#include "platform/OverviewSource.h"

namespace platform::freedesktop {

// The desktop's overview as the application knows it: while one is open, a window of the Dock is on the
// screen that stands for a Space. Other windows are not in the list.
class DesktopOverview final : public OnScreenWindows {
  public:
    // What is passed outlives this object.
    explicit DesktopOverview(std::vector<const OverviewSource*> sources) : sources_(std::move(sources)) {}

    [[nodiscard]] std::optional<std::vector<OnScreenWindow>> copyOnScreenWindows() const override;

  private:
    std::vector<const OverviewSource*> sources_;
};

}  // namespace platform::freedesktop
