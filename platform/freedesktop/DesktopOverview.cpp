#include "platform/freedesktop/DesktopOverview.h"

#include <algorithm>
#include <utility>

namespace platform::freedesktop {

namespace {
constexpr std::int64_t kAboveOtherWindows = 18;
}

DesktopOverview::DesktopOverview(const Screens& screens, std::vector<const OverviewSource*> sources)
    : screens_(screens), sources_(std::move(sources)) {}

std::optional<std::vector<OnScreenWindow>> DesktopOverview::copyOnScreenWindows() const {
    if (!std::ranges::any_of(sources_, &OverviewSource::isOverviewOpen)) return std::vector<OnScreenWindow>();
    const auto size = screens_.mainScreen().value_or(Screen()).frame.size();
    return std::vector{OnScreenWindow{.ownerName = "Dock",
                                      .layer = kAboveOtherWindows,
                                      .bounds = OnScreenBounds{0.0, 0.0, size.width, size.height},
                                      .alpha = 1.0,
                                      .name = "appicon"}};
}

}  // namespace platform::freedesktop
