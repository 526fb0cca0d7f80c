#include "ui/status/StatusButtonPlace.h"

#include <algorithm>
#include <cmath>

#include "orvellos/settings/Setting.h"
#include "orvellos/windows/HomeTarget.h"

namespace ui {

namespace {

using orvellos::AnchoredPosition;
using platform::Point;
using platform::Rect;
using platform::Screen;
using platform::Size;

constexpr std::string_view kDisplayKey = "statusButtonDisplay";
constexpr std::string_view kCornerKey = "statusButtonCorner";
constexpr AnchoredPosition kFirstCorner{
    .hEdge = orvellos::HEdge::Right, .hOffset = 6, .vEdge = orvellos::VEdge::Bottom, .vOffset = 6};

// The anchored centre of a button whose corner is anchored there.
AnchoredPosition centerFor(AnchoredPosition corner, Size size) {
    corner.hOffset += size.width / 2;
    corner.vOffset += size.height / 2;
    return corner;
}

}  // namespace

StatusButtonPlace::StatusButtonPlace(const platform::Screens& screens)
    : screens_(screens), corner_(kFirstCorner) {}

void StatusButtonPlace::rememberIn(platform::DefaultsStore& defaults) {
    defaults_ = &defaults;
    display_ = orvellos::storedValue<std::string>(defaults, kDisplayKey).value_or("");
    corner_ = orvellos::storedValue<AnchoredPosition>(defaults, kCornerKey).value_or(kFirstCorner);
}

std::optional<Screen> StatusButtonPlace::screenOf(const std::string& display) const {
    const auto screen = orvellos::screenOfDisplay(screens_, display);
    return screen ? screen : screens_.mainScreen();
}

std::optional<Screen> StatusButtonPlace::nearestScreen(Point place) const {
    const auto screens = screens_.screens();
    const auto nearest = std::ranges::min_element(screens, {}, [&](const auto& each) {
        const auto edge = orvellos::clampOrigin(place, {}, each.frame);
        return std::hypot(edge.x - place.x, edge.y - place.y);
    });
    return nearest == screens.end() ? std::nullopt : std::optional(*nearest);
}

std::optional<Rect> StatusButtonPlace::frame(Size size) const {
    const auto screen = screenOf(display_);
    if (!screen) return std::nullopt;
    const auto& area = screen->visibleFrame;
    const auto center = centerFor(corner_, size).anchorPoint(area);
    const auto origin =
        orvellos::clampOrigin({center.x - size.width / 2, center.y - size.height / 2}, size, area);
    return Rect{origin.x, origin.y, size.width, size.height};
}

void StatusButtonPlace::put(const Rect& frame) {
    const auto screen = nearestScreen(frame.center());
    if (!screen) return;
    const auto& area = screen->visibleFrame;
    const auto origin = orvellos::clampOrigin(frame.origin(), frame.size(), area);
    corner_ =
        orvellos::anchoredPositionFromPoint({origin.x + frame.width / 2, origin.y + frame.height / 2}, area);
    corner_.hOffset -= frame.width / 2;
    corner_.vOffset -= frame.height / 2;
    display_ = screen->displayId ? screens_.displayUuid(*screen->displayId).value_or("") : "";
    if (!defaults_) return;
    orvellos::storeValue(*defaults_, kDisplayKey, display_);
    orvellos::storeValue(*defaults_, kCornerKey, corner_);
}

}  // namespace ui
