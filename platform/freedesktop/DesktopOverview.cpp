#include "platform/freedesktop/DesktopOverview.h"

#include <algorithm>

namespace platform::freedesktop {

namespace {
// The layer and the size of a window that stands for a Space: what leaves no doubt that an overview is open,
// not even right after a Space switch.
constexpr std::int64_t kLayer = 17;
constexpr OnScreenBounds kBounds{0, 0, 120, 80};
}  // namespace

std::optional<std::vector<OnScreenWindow>> DesktopOverview::copyOnScreenWindows() const {
    if (!std::ranges::any_of(sources_, &OverviewSource::isOverviewOpen)) return std::vector<OnScreenWindow>();
    return std::vector{OnScreenWindow{"Dock", kLayer, kBounds, 1.0, "appicon"}};
}

}  // namespace platform::freedesktop
