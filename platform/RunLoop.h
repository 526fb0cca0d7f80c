#pragma once

#include <chrono>
#include <functional>

#include "platform/Observers.h"

namespace platform {

using Duration = std::chrono::nanoseconds;
using Instant = std::chrono::time_point<std::chrono::steady_clock, Duration>;
using WallTime = std::chrono::time_point<std::chrono::system_clock, Duration>;
using Timer = Subscription;

// Fractional seconds as a duration, exact to the nanosecond.
constexpr Duration seconds(double value) {
    return std::chrono::round<Duration>(std::chrono::duration<double>(value));
}

// The main thread's queue and clocks. Everything runs on the main thread; the clocks and `post` alone may be
// used from any.
class RunLoop {
  public:
    virtual ~RunLoop() = default;

    // Monotonic time, for measuring.
    [[nodiscard]] virtual Instant now() const = 0;
    // The time of day, which the user may set back.
    [[nodiscard]] virtual WallTime wallNow() const = 0;
    // Runs `action` at a later turn of the main loop, after everything that was posted before it.
    virtual void post(std::function<void()> action) = 0;
    // Runs `action` once when `delay` has passed.
    virtual Timer after(Duration delay, std::function<void()> action) = 0;
    // Runs `action` every `interval`, each time at most `tolerance` late by intent.
    virtual Timer every(Duration interval, Duration tolerance, std::function<void()> action) = 0;
};

}  // namespace platform
