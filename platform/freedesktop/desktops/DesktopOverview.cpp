#include "platform/freedesktop/desktops/DesktopOverview.h"

#include <algorithm>

namespace platform::freedesktop {

namespace {
// The layer and the size of a window that stands for a Space: what leaves no doubt that an overview is open,
// not even right after a Space switch.
constexpr std::int64_t kLayer = 17;
constexpr OnScreenBounds kBounds{0, 0, 120, 80};
}  // namespace

DesktopOverview::DesktopOverview(std::vector<OverviewSource*> sources) : sources_(std::move(sources)) {
    for (auto* source : sources_) sourceChanges_.push_back(source->onOverviewChanged([this] { update(); }));
    update();
}

void DesktopOverview::update() {
    const bool isOpen = std::ranges::any_of(sources_, &OverviewSource::isOverviewOpen);
    if (std::exchange(isOpen_, isOpen) != isOpen) changed_.notify();
    const bool mayOpen = std::ranges::any_of(sources_, &OverviewSource::mayOpen);
    if (std::exchange(mayOpen_, mayOpen) != mayOpen) mayOpenChanged_.notify(mayOpen);
}

Subscription DesktopOverview::followMayOpen(const std::function<void(bool)>& action) {
    action(mayOpen_);
    return mayOpenChanged_.subscribe(action);
}

std::optional<std::vector<OnScreenWindow>> DesktopOverview::copyOnScreenWindows() const {
    if (!isOpen_) return std::vector<OnScreenWindow>();
    return std::vector{OnScreenWindow{"Dock", kLayer, kBounds, 1.0, "appicon"}};
}

}  // namespace platform::freedesktop
