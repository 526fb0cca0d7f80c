#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace platform {

// All coordinates are points with the origin at the lower left of the main screen and y growing upward,
// unless a declaration says otherwise.

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Rect&) const = default;

    [[nodiscard]] double minX() const { return x; }
    [[nodiscard]] double minY() const { return y; }
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double maxY() const { return y + height; }
    [[nodiscard]] double midX() const { return x + width / 2; }
    [[nodiscard]] double midY() const { return y + height / 2; }
    [[nodiscard]] Point origin() const { return {x, y}; }
    [[nodiscard]] Size size() const { return {width, height}; }
    [[nodiscard]] Point center() const { return {midX(), midY()}; }
    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }

    // Half open: the minimum edges belong to the rectangle, the maximum edges do not.
    [[nodiscard]] bool contains(Point p) const {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }
    // Shrinks by `margin` points on every side; a negative margin grows.
    [[nodiscard]] Rect insetBy(double margin) const {
        return {x + margin, y + margin, width - 2 * margin, height - 2 * margin};
    }
};

// One step of an outline. `to` is where the pen ends; the arc fields are used by arcs alone.
struct PathElement {
    enum class Kind { Move, Line, Arc, Close };
    Kind kind = Kind::Move;
    Point to;
    Point center;
    double radius = 0;
    double startAngle = 0;  // radians, counter-clockwise from the positive x axis
    double sweep = 0;       // radians, positive is counter-clockwise (y upward)
    bool operator==(const PathElement&) const = default;
};

// An outline of straight segments and circular arcs, filled by the even-odd rule.
struct Path {
    std::vector<PathElement> elements;
    bool operator==(const Path&) const = default;
};

// An sRGB colour, each component in 0…1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const Color&) const = default;
};

}  // namespace platform
