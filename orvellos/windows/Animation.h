#pragma once

#include <functional>

#include "platform/RunLoop.h"

namespace orvellos {

// How the progress of an animation follows its time, both in 0…1: a cubic Bézier curve from (0, 0) to (1, 1)
// with the two given control points.
struct TimingCurve {
    double x1 = 0;
    double y1 = 0;
    double x2 = 1;
    double y2 = 1;

    [[nodiscard]] double progress(double time) const;
};
inline constexpr TimingCurve kEaseIn{0.42, 0, 1, 1};
inline constexpr TimingCurve kEaseOut{0, 0, 0.58, 1};
inline constexpr TimingCurve kEaseInEaseOut{0.42, 0, 0.58, 1};

// The cubic ease-in-ease-out of frame animations.
[[nodiscard]] double cubicEaseInOut(double time);

// Runs one animation at a time, 60 steps a second. Starting another, or stopping, ends the one before where
// it is.
class Animation {
  public:
    explicit Animation(platform::RunLoop& runLoop) : runLoop_(runLoop) {}

    // Calls `step` with the time passed in 0…1, the last time with exactly 1.
    void start(platform::Duration duration, std::function<void(double time)> step);
    void stop() { timer_.cancel(); }
    [[nodiscard]] bool isRunning() const { return timer_.isActive(); }

  private:
    platform::RunLoop& runLoop_;
    platform::Timer timer_;
};

}  // namespace orvellos
