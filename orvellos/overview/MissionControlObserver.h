#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "orvellos/base/Published.h"
#include "platform/Files.h"
#include "platform/RunLoop.h"
#include "platform/WindowList.h"

namespace orvellos {

// A window of the Dock, from which the state of Mission Control is told. Points, origin at the top left of
// the main display; a value that the window list did not give is 0 (the layer), -1 or empty.
struct DockWindow {
    std::int64_t layer = 0;
    double width = -1;
    double height = -1;
    double x = -1;
    double y = -1;
    double alpha = -1;
    std::string name;
    bool operator==(const DockWindow&) const = default;
};

// What one look at the Dock's windows says.
struct Detection {
    bool active = false;  // Mission Control is open
    std::size_t dockWindowCount = 0;
    bool sawAppIcon = false;
    std::size_t l17ChipCount = 0;  // windows that stand for a Space each
    bool sawNonPositiveLayer = false;
    std::vector<std::string> summaries;  // of the first 12 windows, one line each
    bool l3Fallback = false;             // only a window that fills the screen speaks for it
};

// The Dock's windows of a list, in its order.
[[nodiscard]] std::vector<DockWindow> dockWindows(std::span<const platform::OnScreenWindow> windows);
// "L17 α1.00 120x80@40,300 name="""
[[nodiscard]] std::string summary(const DockWindow& window);
// All of a Detection but the summaries. With `acceptL3Fallback` a window that fills the screen may decide.
[[nodiscard]] Detection classify(std::span<const DockWindow> windows, bool acceptL3Fallback);

// Remembers whether Mission Control is open and when it last closed.
struct MCActivityGate {
    static constexpr platform::Duration kRecentPeriod = platform::seconds(2);

    bool isActive = false;
    std::optional<platform::Instant> lastCloseAt;

    void update(bool active, platform::Instant now) {
        if (!active && isActive) lastCloseAt = now;
        isActive = active;
    }
    // Open, or closed at most two seconds ago.
    [[nodiscard]] bool wasActiveRecently(platform::Instant now) const {
        return isActive || (lastCloseAt && now >= *lastCloseAt && now - *lastCloseAt <= kRecentPeriod);
    }
};

// Tells whether Mission Control is open, and whether a swipe between Spaces is under way, by looking at the
// Dock's windows many times a second: 60 while something happens, 10 while nothing does, or then only when
// the list tells of a change. Opening is told at once, closing when it has lasted. Main thread only.
class MissionControlObserver {
  public:
    static constexpr platform::Duration kBurstInterval = platform::seconds(1.0 / 60);
    static constexpr platform::Duration kIdleInterval = platform::seconds(0.1);
    static constexpr platform::Duration kCloseDebounce = platform::seconds(0.25);

    MissionControlObserver(platform::RunLoop& runLoop, platform::OnScreenWindows& windows,
                           const platform::DefaultsStore& defaults)
        : runLoop_(runLoop),
          windows_(windows),
          defaults_(defaults),
          listChanges_(windows.onChanged([this] { listChanged(); })) {}

    // Both are announced on change only.
    [[nodiscard]] Published<bool>& isActive() { return isActive_; }
    [[nodiscard]] Published<bool>& swipeTransitionInProgress() { return swipeTransitionInProgress_; }

    // Polls at once and from then on; nothing when it polls already.
    void start();
    // Stops polling and forgets a pending close; both values stay as they are.
    void pause();
    // Open, or closed at most two seconds ago.
    [[nodiscard]] bool missionControlRecentlyActive() const {
        return mcGate_.wasActiveRecently(runLoop_.now());
    }
    [[nodiscard]] bool isPolling() const { return currentInterval_ > platform::Duration::zero(); }
    // Zero while paused.
    [[nodiscard]] platform::Duration currentInterval() const { return currentInterval_; }

    // Polls fast, also from a pause, because something is about to happen.
    void expectChange();
    // For that long only an unmistakable reading counts: a Space switch looks like Mission Control.
    void suppressDetection(platform::Duration duration);
    [[nodiscard]] bool isSuppressed() const;

  private:
    void setInterval(platform::Duration interval);
    void slowDown();
    void listChanged();
    void poll();
    [[nodiscard]] Detection readDockWindows() const;
    [[nodiscard]] bool passesSuppression(const Detection& detection);
    void followSwipe(const Detection& detection);
    void logMarkers(const Detection& detection) const;
    [[nodiscard]] bool isInteresting(const Detection& detection);
    void open();
    void followClose(const Detection& detection);
    void setActive(bool active);

    platform::RunLoop& runLoop_;
    platform::OnScreenWindows& windows_;
    const platform::DefaultsStore& defaults_;
    platform::Subscription listChanges_;
    Published<bool> isActive_{false};
    MCActivityGate mcGate_;
    Published<bool> swipeTransitionInProgress_{false};
    platform::Timer timer_;
    platform::Duration currentInterval_{};
    std::optional<platform::Instant> lastInterestingAt_;
    std::optional<std::size_t> lastDockWindowCount_;  // of the last reading; absent before the first
    std::optional<platform::Instant> pendingInactiveSince_;
    std::optional<platform::Instant> suppressUntil_;
};

}  // namespace orvellos
