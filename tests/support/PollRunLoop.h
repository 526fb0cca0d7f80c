#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "platform/DescriptorWatcher.h"
#include "platform/RunLoop.h"
#include "tests/support/Wait.h"

namespace desktop_test {

// A main loop over poll(2), for tests of code that really waits. One thread only.
class PollRunLoop final : public platform::RunLoop, public platform::DescriptorWatcher {
  public:
    [[nodiscard]] platform::Instant now() const override { return std::chrono::steady_clock::now(); }
    [[nodiscard]] platform::WallTime wallNow() const override { return std::chrono::system_clock::now(); }
    void post(std::function<void()> action) override;
    platform::Timer after(platform::Duration delay, std::function<void()> action) override;
    platform::Timer every(platform::Duration interval, platform::Duration tolerance,
                          std::function<void()> action) override;
    platform::Subscription watchReadable(int descriptor, std::function<void()> action) override;
    platform::Subscription watchWritable(int descriptor, std::function<void()> action) override;

    // Runs until `holds` says true; false when it still does not at the deadline.
    [[nodiscard]] bool runUntil(const std::function<bool()>& holds,
                                platform::Duration deadline = kGenerousDeadline);
    // Runs for that long.
    void runFor(platform::Duration duration);
    // The longest time that one action has kept the loop busy.
    [[nodiscard]] platform::Duration longestAction() const { return longestAction_; }

  private:
    // Something to run: at an instant, or when a descriptor is ready.
    struct Source {
        std::function<void()> action;
        platform::Instant due = platform::Instant::max();
        platform::Duration interval{};
        int descriptor = -1;
        short events = 0;
    };
    using Sources = std::map<std::uint64_t, Source>;

    platform::Subscription add(Source source);
    void turn(platform::Instant latest);
    void run(std::uint64_t key);
    void runDueTimers();

    std::shared_ptr<Sources> sources_ = std::make_shared<Sources>();
    std::uint64_t nextKey_ = 0;
    platform::Duration longestAction_{};
};

}  // namespace desktop_test
