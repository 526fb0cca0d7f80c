#include "orvellos/overview/MissionControlObserver.h"

#include <fmt/format.h>
#include <algorithm>
#include <cmath>

#include "orvellos/base/DebugLog.h"
#include "orvellos/settings/Setting.h"

namespace orvellos {

namespace {

constexpr std::int64_t kChipLayer = 17;
constexpr double kSmallestChip = 40;
constexpr double kLargestChip = 250;
constexpr std::int64_t kFullScreenLayer = 3;
constexpr double kLeastFullWidth = 1000;
constexpr double kLeastFullHeight = 600;
constexpr std::size_t kMostWindowsAtRest = 20;

bool isChipSide(double length) {
    return length >= kSmallestChip && length <= kLargestChip;
}

bool isChip(const DockWindow& window) {
    return window.layer == kChipLayer && isChipSide(window.width) && isChipSide(window.height);
}

bool fillsScreen(const DockWindow& window) {
    return window.layer == kFullScreenLayer && window.width >= kLeastFullWidth &&
           window.height >= kLeastFullHeight && window.name.empty();
}

DockWindow fromEntry(const platform::OnScreenWindow& entry) {
    const auto bounds = entry.bounds.value_or(platform::OnScreenBounds());
    return {entry.layer.value_or(0), bounds.width.value_or(-1), bounds.height.value_or(-1),
            bounds.x.value_or(-1),   bounds.y.value_or(-1),     entry.alpha.value_or(-1),
            entry.name.value_or("")};
}

// A coordinate without its fraction, within what fits a line.
long long whole(double value) {
    return std::isfinite(value) ? static_cast<long long>(std::clamp(value, -1e15, 1e15)) : 0;
}

}  // namespace

std::vector<DockWindow> dockWindows(std::span<const platform::OnScreenWindow> windows) {
    std::vector<DockWindow> result;
    for (const auto& entry : windows)
        if (entry.ownerName == "Dock") result.push_back(fromEntry(entry));
    return result;
}

std::string summary(const DockWindow& window) {
    return fmt::format("L{} α{:.2f} {}x{}@{},{} name=\"{}\"", window.layer, window.alpha, whole(window.width),
                       whole(window.height), whole(window.x), whole(window.y), window.name);
}

Detection classify(std::span<const DockWindow> windows, bool acceptL3Fallback) {
    Detection detection;
    detection.dockWindowCount = windows.size();
    detection.sawAppIcon =
        std::ranges::any_of(windows, [](const auto& window) { return window.name == "appicon"; });
    detection.sawNonPositiveLayer =
        std::ranges::any_of(windows, [](const auto& window) { return window.layer < 1; });
    detection.l17ChipCount = static_cast<std::size_t>(std::ranges::count_if(windows, isChip));
    if (detection.sawAppIcon || detection.l17ChipCount >= 1) {
        detection.active = true;
    } else if (acceptL3Fallback && std::ranges::any_of(windows, fillsScreen) &&
               !detection.sawNonPositiveLayer && windows.size() <= kMostWindowsAtRest) {
        detection.active = true;
        detection.l3Fallback = true;
    }
    return detection;
}

namespace {

constexpr auto kIdleTolerance = platform::seconds(0.02);
constexpr auto kIdleDelay = platform::seconds(1.5);
constexpr std::size_t kMostSummaries = 12;
constexpr const char* kFallbackKey = "classifierAcceptL3Fallback";

void logObserver(const std::string& text) {
    logMC(std::nullopt, "OBSERVER: " + text);
}

long long closeDebounceInMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(MissionControlObserver::kCloseDebounce)
        .count();
}

}  // namespace

void MissionControlObserver::start() {
    if (isPolling()) return;
    expectChange();
    poll();
}

void MissionControlObserver::pause() {
    timer_.cancel();
    currentInterval_ = {};
    lastDockWindowCount_.reset();
    pendingInactiveSince_.reset();
    suppressUntil_.reset();
}

void MissionControlObserver::setInterval(platform::Duration interval) {
    currentInterval_ = interval;
    const auto tolerance = interval == kIdleInterval ? kIdleTolerance : platform::Duration::zero();
    timer_ = runLoop_.every(interval, tolerance, [this] { poll(); });
}

// An empty list needs no second look until it tells of a change.
void MissionControlObserver::slowDown() {
    setInterval(kIdleInterval);
    if (listChanges_.isActive() && lastDockWindowCount_ == 0) timer_.cancel();
}

void MissionControlObserver::listChanged() {
    if (!isPolling()) return;
    expectChange();
    poll();
}

void MissionControlObserver::expectChange() {
    lastInterestingAt_ = runLoop_.now();
    if (currentInterval_ != kBurstInterval) setInterval(kBurstInterval);
}

void MissionControlObserver::suppressDetection(platform::Duration duration) {
    suppressUntil_ = runLoop_.now() + duration;
    expectChange();
    if (isActive_.get()) logObserver("suppress armed while MC active — leaving isActive=true");
}

bool MissionControlObserver::isSuppressed() const {
    return suppressUntil_ && runLoop_.now() < *suppressUntil_;
}

Detection MissionControlObserver::readDockWindows() const {
    const auto list = windows_.copyOnScreenWindows();
    if (!list) return {};
    const auto dock = dockWindows(*list);
    auto detection = classify(dock, storedValue<bool>(defaults_, kFallbackKey).value_or(true));
    for (const auto& window : std::span(dock).first(std::min(dock.size(), kMostSummaries)))
        detection.summaries.push_back(summary(window));
    return detection;
}

void MissionControlObserver::poll() {
    const auto detection = readDockWindows();
    if (!passesSuppression(detection)) return;
    followSwipe(detection);
    if (isInteresting(detection)) expectChange();
    lastDockWindowCount_ = detection.dockWindowCount;
    if (detection.active)
        open();
    else
        followClose(detection);
}

bool MissionControlObserver::passesSuppression(const Detection& detection) {
    if (!isSuppressed()) return true;
    if (detection.l17ChipCount < 1 || detection.sawNonPositiveLayer) return false;
    logObserver(fmt::format("suppression BYPASSED by strong MC signature (chips={} dockWindows={})",
                            detection.l17ChipCount, detection.dockWindowCount));
    suppressUntil_.reset();
    return true;
}

void MissionControlObserver::followSwipe(const Detection& detection) {
    const bool swipe = !detection.active &&
                       (detection.sawNonPositiveLayer || detection.dockWindowCount > kMostWindowsAtRest);
    if (detection.active && !isActive_.get()) logMarkers(detection);
    if (swipe == swipeTransitionInProgress_.get()) return;
    swipeTransitionInProgress_.set(swipe);
    logObserver(fmt::format("swipeTransitionInProgress={} (dockWindows={} nonPositive={})", swipe,
                            detection.dockWindowCount, detection.sawNonPositiveLayer));
}

void MissionControlObserver::logMarkers(const Detection& detection) const {
    logObserver(
        fmt::format("detector markers: dockWindows={} appicon={} l17Chips={} nonPositiveLayer={} "
                    "l3Fallback={}",
                    detection.dockWindowCount, detection.sawAppIcon, detection.l17ChipCount,
                    detection.sawNonPositiveLayer, detection.l3Fallback));
    if (detection.l3Fallback)
        logObserver(
            "MC detected via L3-FULLSCREEN FALLBACK (experimental — no L17 chips / no appicon present)");
    for (const auto& line : detection.summaries) logObserver("  • " + line);
}

// Slows down when it has been quiet for long enough.
bool MissionControlObserver::isInteresting(const Detection& detection) {
    if (detection.active || isActive_.get() || swipeTransitionInProgress_.get()) return true;
    if (lastDockWindowCount_ != detection.dockWindowCount) return true;
    const bool quiet = !lastInterestingAt_ || runLoop_.now() - *lastInterestingAt_ > kIdleDelay;
    if (quiet && currentInterval_ == kBurstInterval) slowDown();
    return false;
}

void MissionControlObserver::open() {
    pendingInactiveSince_.reset();
    if (isActive_.get()) return;
    logVerbose("MissionControlObserver: open detected");
    logObserver("MC open detected (poll)");
    setActive(true);
}

void MissionControlObserver::setActive(bool active) {
    mcGate_.update(active, runLoop_.now());
    isActive_.set(active);
}

void MissionControlObserver::followClose(const Detection& detection) {
    if (!isActive_.get()) {
        pendingInactiveSince_.reset();
        return;
    }
    const bool idle = detection.dockWindowCount <= 1 && !detection.sawNonPositiveLayer &&
                      detection.l17ChipCount == 0 && !detection.sawAppIcon;
    const auto now = runLoop_.now();
    if (!idle) {
        if (std::exchange(pendingInactiveSince_, std::nullopt))
            logObserver(fmt::format(
                "close debounce ABORTED — non-idle reading (dockWindows={} nonPositive={} "
                "l17={})",
                detection.dockWindowCount, detection.sawNonPositiveLayer, detection.l17ChipCount));
    } else if (!pendingInactiveSince_) {
        pendingInactiveSince_ = now;
        logObserver(fmt::format("MC close detected (idle dock), starting {}ms debounce",
                                closeDebounceInMilliseconds()));
    } else if (now - *pendingInactiveSince_ >= kCloseDebounce) {
        pendingInactiveSince_.reset();
        logVerbose("MissionControlObserver: close committed");
        logObserver(
            fmt::format("MC close committed (after {}ms idle debounce)", closeDebounceInMilliseconds()));
        setActive(false);
    }
}

}  // namespace orvellos
