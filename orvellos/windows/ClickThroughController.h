#pragma once

#include <functional>
#include <vector>

#include "orvellos/windows/TagWindow.h"

namespace orvellos {

// Lets the clicks beside a tag's silhouette reach the windows below, by switching each main window between
// taking and ignoring the mouse as the pointer comes and goes; for window systems that cannot do so
// themselves.
class ClickThroughController {
  public:
    static constexpr double kIdleHz = 5;
    static constexpr double kBusyHz = 30;

    // `windowsProvider` gives the main windows of all tags.
    ClickThroughController(platform::RunLoop& runLoop, const platform::Screens& screens,
                           std::function<std::vector<TagWindow*>()> windowsProvider);

    // Polls `hz` times a second; nothing changes when it does already.
    void start(double hz);
    void stop();
    void tick();
    [[nodiscard]] double timerHz() const { return timer_.isActive() ? timerHz_ : 0; }

  private:
    [[nodiscard]] bool adjust(TagWindow& window, platform::Point pointer) const;

    platform::RunLoop& runLoop_;
    const platform::Screens& screens_;
    std::function<std::vector<TagWindow*>()> windowsProvider_;
    platform::Timer timer_;
    double timerHz_ = 0;
};

}  // namespace orvellos
