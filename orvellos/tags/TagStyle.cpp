#include "orvellos/tags/TagStyle.h"

#include <algorithm>
#include <cmath>

#include "orvellos/base/PathGeometry.h"

namespace orvellos {

namespace {

platform::Path luggageTag(double w, double h) {
    const double r = std::min(0.45 * w, 0.32 * h);
    const double m = 0.5 * h;
    PathBuilder path;
    path.moveTo({w - r, 0});
    path.arcTo({w, 0}, {w, h}, r);
    path.arcTo({w, h}, {m, h}, r);
    path.arcTo({m, h}, {0, m}, 0.14 * h);
    path.arcTo({0, m}, {m, 0}, 0.22 * h);
    path.arcTo({m, 0}, {w - r, 0}, 0.14 * h);
    path.close();
    return path.take();
}

}  // namespace

std::string_view title(TagShape shape) {
    return shape == TagShape::Pill ? "Pill" : "Tag";
}

platform::Path outlinePath(TagShape shape, double width, double height) {
    if (shape == TagShape::Pill) return roundedRectanglePath(width, height, std::min(width, height) / 2);
    return luggageTag(width, height);
}

namespace {

struct Measure {
    double fractionOfScreen;
    double minimum;
};
constexpr std::array<Measure, 6> kMeasures = {
    {{0.025, 28}, {0.04, 42}, {0.06, 64}, {0.095, 100}, {0.15, 160}, {0.23, 240}}};
constexpr double kAssumedScreenHeight = 900;

}  // namespace

double baseHeight(TagSize size, const std::optional<platform::Screen>& mainScreen) {
    const auto& measure = kMeasures[static_cast<std::size_t>(size)];
    const double screen = mainScreen ? mainScreen->frame.height : kAssumedScreenHeight;
    return std::max(std::round(screen * measure.fractionOfScreen), measure.minimum);
}

}  // namespace orvellos
