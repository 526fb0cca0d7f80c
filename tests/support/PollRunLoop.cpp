#include "tests/support/PollRunLoop.h"

#include <poll.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace desktop_test {

using platform::Duration;
using platform::Instant;

namespace {
constexpr Duration kLongestPoll = std::chrono::milliseconds(10);  // what is waited for may happen elsewhere
}

platform::Subscription PollRunLoop::add(Source source) {
    const auto key = nextKey_++;
    sources_->emplace(key, std::move(source));
    return platform::Subscription([weak = std::weak_ptr(sources_), key] {
        if (const auto sources = weak.lock()) sources->erase(key);
    });
}

void PollRunLoop::post(std::function<void()> action) {
    sources_->emplace(nextKey_++, Source{.action = std::move(action), .due = now()});
}

platform::Timer PollRunLoop::after(Duration delay, std::function<void()> action) {
    return add({.action = std::move(action), .due = now() + delay});
}

platform::Timer PollRunLoop::every(Duration interval, Duration /*tolerance*/, std::function<void()> action) {
    return add({.action = std::move(action), .due = now() + interval, .interval = interval});
}

platform::Subscription PollRunLoop::watchReadable(int descriptor, std::function<void()> action) {
    return add({.action = std::move(action), .descriptor = descriptor, .events = POLLIN});
}

platform::Subscription PollRunLoop::watchWritable(int descriptor, std::function<void()> action) {
    return add({.action = std::move(action), .descriptor = descriptor, .events = POLLOUT});
}

void PollRunLoop::run(std::uint64_t key) {
    const auto found = sources_->find(key);
    if (found == sources_->end()) return;
    const auto action = found->second.action;
    if (found->second.interval > Duration::zero())
        found->second.due += found->second.interval;
    else if (found->second.descriptor < 0)
        sources_->erase(found);
    const auto start = now();
    action();
    longestAction_ = std::max<Duration>(longestAction_, now() - start);
}

void PollRunLoop::runDueTimers() {
    std::vector<std::pair<Instant, std::uint64_t>> due;
    for (const auto& [key, source] : *sources_)
        if (source.due <= now()) due.emplace_back(source.due, key);
    std::ranges::sort(due);
    for (const auto& [instant, key] : due) run(key);
}

void PollRunLoop::turn(Instant latest) {
    std::vector<pollfd> polled;
    std::vector<std::uint64_t> keys;
    Instant wake = latest;
    for (const auto& [key, source] : *sources_) {
        wake = std::min(wake, source.due);
        if (source.descriptor < 0) continue;
        polled.push_back({source.descriptor, source.events, 0});
        keys.push_back(key);
    }
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(std::max(wake - now(), Duration::zero()));
    ::poll(polled.data(), polled.size(), static_cast<int>(wait.count()));
    for (std::size_t i = 0; i < polled.size(); ++i)
        if (polled[i].revents != 0) run(keys[i]);
    runDueTimers();
}

bool PollRunLoop::runUntil(const std::function<bool()>& holds, Duration deadline) {
    const Instant end = now() + deadline;
    while (!holds()) {
        if (now() >= end) return false;
        turn(std::min<Instant>(end, now() + kLongestPoll));
    }
    return true;
}

void PollRunLoop::runFor(Duration duration) {
    (void)runUntil([] { return false; }, duration);
}

}  // namespace desktop_test
