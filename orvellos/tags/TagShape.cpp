#include "orvellos/tags/TagShape.h"

#include <algorithm>

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

}  // namespace orvellos
