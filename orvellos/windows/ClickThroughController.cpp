#include "orvellos/windows/ClickThroughController.h"

#include <algorithm>

namespace orvellos {

namespace {

constexpr double kInvisible = 0.05;

bool isDormant(const TagWindow* window) {
    return window->alphaValue() <= kInvisible && !window->isInGesture();
}

}  // namespace

ClickThroughController::ClickThroughController(platform::RunLoop& runLoop, const platform::Screens& screens,
                                               std::function<std::vector<TagWindow*>()> windowsProvider)
    : runLoop_(runLoop), screens_(screens), windowsProvider_(std::move(windowsProvider)) {}

void ClickThroughController::start(double hz) {
    if (timer_.isActive() && timerHz_ == hz) return;
    timerHz_ = hz;
    const auto tolerance = hz == kIdleHz ? platform::seconds(0.2 / hz) : platform::Duration::zero();
    timer_ = runLoop_.every(platform::seconds(1 / hz), tolerance, [this] { tick(); });
}

void ClickThroughController::stop() {
    timer_.cancel();
}

void ClickThroughController::tick() {
    const auto windows = windowsProvider_();
    if (std::ranges::all_of(windows, isDormant)) return start(kIdleHz);
    const auto pointer = screens_.pointerLocation();
    bool busy = false;
    for (auto* window : windows) busy = adjust(*window, pointer) || busy;
    start(busy ? kBusyHz : kIdleHz);
}

// Sets whether the window takes the mouse; true when it keeps the polling busy.
bool ClickThroughController::adjust(TagWindow& window, platform::Point pointer) const {
    if (window.alphaValue() <= kInvisible) return false;
    if (window.isInGesture()) {
        window.setIgnoresMouseEvents(false);
        return true;
    }
    const bool inside = window.frame().contains(pointer);
    window.setIgnoresMouseEvents(!inside || !window.hitMaskContains(pointer));
    return inside;
}

}  // namespace orvellos
