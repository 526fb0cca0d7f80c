#include "orvellos/base/PathGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvellos {

namespace {

using platform::PathElement;
using platform::Point;

constexpr double kNearlyNothing = 1e-9;
constexpr int kStepsOfFullCircle = 96;  // straight steps that stay within 0.06 % of the radius

Point unit(Point from, Point to) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    return length < kNearlyNothing ? Point{} : Point{(to.x - from.x) / length, (to.y - from.y) / length};
}

// Counts whether the ray from `p` to the right crosses the segment.
bool crosses(Point a, Point b, Point p) {
    return (a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x);
}

}  // namespace

void PathBuilder::moveTo(Point point) {
    path_.elements.push_back({PathElement::Kind::Move, point, {}, 0, 0, 0});
    start_ = current_ = point;
}

void PathBuilder::lineTo(Point point) {
    path_.elements.push_back({PathElement::Kind::Line, point, {}, 0, 0, 0});
    current_ = point;
}

void PathBuilder::arcTo(Point first, Point second, double radius) {
    const Point in = unit(first, current_);
    const Point out = unit(first, second);
    const double cosine = in.x * out.x + in.y * out.y;
    const double cross = in.x * out.y - in.y * out.x;
    if (radius <= 0 || std::abs(cross) < kNearlyNothing) return lineTo(first);
    const double halfAngle = std::acos(std::clamp(cosine, -1.0, 1.0)) / 2;
    const double toTangent = radius / std::tan(halfAngle);
    const Point start{first.x + in.x * toTangent, first.y + in.y * toTangent};
    const Point end{first.x + out.x * toTangent, first.y + out.y * toTangent};
    const double toCenter = radius / std::sin(halfAngle);
    const Point bisector = unit({0, 0}, {in.x + out.x, in.y + out.y});
    const Point center{first.x + bisector.x * toCenter, first.y + bisector.y * toCenter};
    lineTo(start);
    const double startAngle = std::atan2(start.y - center.y, start.x - center.x);
    const double turn = std::numbers::pi - 2 * halfAngle;
    path_.elements.push_back(
        {PathElement::Kind::Arc, end, center, radius, startAngle, cross < 0 ? turn : -turn});
    current_ = end;
}

void PathBuilder::close() {
    path_.elements.push_back({PathElement::Kind::Close, start_, {}, 0, 0, 0});
    current_ = start_;
}

platform::Path rectanglePath(double width, double height) {
    return roundedRectanglePath(width, height, 0);
}

platform::Path roundedRectanglePath(double width, double height, double radius) {
    PathBuilder path;
    path.moveTo({radius, 0});
    path.arcTo({width, 0}, {width, height}, radius);
    path.arcTo({width, height}, {0, height}, radius);
    path.arcTo({0, height}, {0, 0}, radius);
    path.arcTo({0, 0}, {width, 0}, radius);
    path.close();
    return path.take();
}

bool contains(const platform::Path& path, Point point) {
    bool inside = false;
    Point current;
    const auto segment = [&](Point to) {
        inside = inside != crosses(current, to, point);
        current = to;
    };
    for (const auto& element : path.elements) {
        if (element.kind == PathElement::Kind::Move) {
            current = element.to;
        } else if (element.kind == PathElement::Kind::Arc) {
            const int steps =
                1 + static_cast<int>(std::abs(element.sweep) / (2 * std::numbers::pi) * kStepsOfFullCircle);
            for (int i = 1; i < steps; ++i) {
                const double angle = element.startAngle + element.sweep * i / steps;
                segment({element.center.x + element.radius * std::cos(angle),
                         element.center.y + element.radius * std::sin(angle)});
            }
            segment(element.to);
        } else {
            segment(element.to);
        }
    }
    return inside;
}

}  // namespace orvellos
