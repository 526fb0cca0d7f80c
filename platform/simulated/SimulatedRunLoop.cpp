#include "platform/simulated/SimulatedRunLoop.h"

#include <stdexcept>

namespace platform::simulated {

namespace {
constexpr int kMostTurns = 100000;  // a loop that feeds itself is a fault of the code under test
}

SimulatedRunLoop::SimulatedRunLoop()
    : now_(seconds(1000)),
      wallNow_(std::chrono::sys_days(std::chrono::year(2026) / 3 / 14) + std::chrono::hours(9)) {}

void SimulatedRunLoop::post(std::function<void()> action) {
    posted_.push_back(std::move(action));
}

Timer SimulatedRunLoop::after(Duration delay, std::function<void()> action) {
    return add(delay, Duration::zero(), std::move(action));
}

Timer SimulatedRunLoop::every(Duration interval, Duration /*tolerance*/, std::function<void()> action) {
    if (interval <= Duration::zero()) throw std::logic_error("a repeating timer needs an interval");
    return add(interval, interval, std::move(action));
}

Timer SimulatedRunLoop::add(Duration delay, Duration interval, std::function<void()> action) {
    const auto id = nextId_++;
    timers_->emplace(Key{now_ + std::max(delay, Duration::zero()), id}, Entry{std::move(action), interval});
    return Timer([weak = std::weak_ptr(timers_), id] {
        if (auto timers = weak.lock())
            std::erase_if(*timers, [id](const auto& timer) { return timer.first.second == id; });
    });
}

void SimulatedRunLoop::runPosted() {
    for (int turn = 0; !posted_.empty(); ++turn) {
        if (turn == kMostTurns) throw std::logic_error("the main queue never empties");
        const auto action = std::move(posted_.front());
        posted_.pop_front();
        action();
    }
}

void SimulatedRunLoop::fireFirst() {
    const auto node = timers_->extract(timers_->begin());
    const auto [due, id] = node.key();
    wallNow_ += due - now_;
    now_ = due;
    const auto action = node.mapped().action;
    const auto interval = node.mapped().interval;
    if (interval > Duration::zero()) timers_->emplace(Key{due + interval, id}, Entry{action, interval});
    action();
}

void SimulatedRunLoop::advance(Duration duration) {
    const Instant end = now_ + duration;
    runPosted();
    while (!timers_->empty() && timers_->begin()->first.first <= end) {
        fireFirst();
        runPosted();
    }
    wallNow_ += end - now_;
    now_ = end;
}

}  // namespace platform::simulated
