#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/RunLoop.h"

namespace platform::simulated {

// A run loop whose time stands still until a test advances it. Timers due at the same instant fire in the
// order in which they were made; posted actions run before any timer.
class SimulatedRunLoop final : public RunLoop {
  public:
    SimulatedRunLoop();

    [[nodiscard]] Instant now() const override { return now_; }
    [[nodiscard]] WallTime wallNow() const override { return wallNow_; }
    void post(std::function<void()> action) override;
    Timer after(Duration delay, std::function<void()> action) override;
    Timer every(Duration interval, Duration tolerance, std::function<void()> action) override;

    // Runs everything that is posted, and what that posts.
    void runPosted();
    // Lets `duration` pass: every timer due up to and including its end fires at its own instant.
    void advance(Duration duration);
    // Sets the time of day, as a user may; monotonic time goes on as before.
    void setWallNow(WallTime time) { wallNow_ = time; }

    [[nodiscard]] std::size_t pendingTimers() const { return timers_->size(); }
    [[nodiscard]] bool hasPosted() const { return !posted_.empty(); }

  private:
    struct Entry {
        std::function<void()> action;
        Duration interval;  // zero for a one-shot timer
    };
    using Key = std::pair<Instant, std::uint64_t>;
    using Timers = std::map<Key, Entry>;

    Timer add(Duration delay, Duration interval, std::function<void()> action);
    void fireFirst();

    Instant now_;
    WallTime wallNow_;
    std::deque<std::function<void()>> posted_;
    std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();
    std::uint64_t nextId_ = 0;
};

}  // namespace platform::simulated
