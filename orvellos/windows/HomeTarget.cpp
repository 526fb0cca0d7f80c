#include "orvellos/windows/HomeTarget.h"

#include <algorithm>

namespace orvellos {

using platform::Point;
using platform::Rect;
using platform::Size;

std::optional<platform::Screen> screenOfDisplay(const platform::Screens& screens,
                                                const std::optional<std::string>& uuid) {
    const auto all = screens.screens();
    const auto found = std::ranges::find_if(all, [&](const platform::Screen& screen) {
        return uuid && screen.displayId && screens.displayUuid(*screen.displayId) == uuid;
    });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

std::optional<platform::Screen> screenUnder(const platform::Screens& screens, Point point) {
    const auto all = screens.screens();
    const auto* found = platform::screenAt(all, point);
    return found ? std::optional(*found) : std::nullopt;
}

Point clampOrigin(Point origin, Size size, const Rect& area) {
    const auto clamp = [](double value, double low, double high) {
        return std::clamp(value, low, std::max(high, low));
    };
    return {clamp(origin.x, area.minX(), area.maxX() - size.width),
            clamp(origin.y, area.minY(), area.maxY() - size.height)};
}

Rect anchoredFrame(Size size, const AnchoredPosition& position, const ScreenContext& screen) {
    const Point anchor = position.anchorPoint(screen.anchorReferenceFrame);
    const Point origin =
        clampOrigin({anchor.x - size.width / 2, anchor.y - size.height / 2}, size, screen.clampFrame);
    return {origin.x, origin.y, size.width, size.height};
}

Rect detachedFrame(Size size, const Rect& frame) {
    return {frame.midX() - size.width / 2, frame.midY() - size.height / 2, size.width, size.height};
}

}  // namespace orvellos
