#pragma once

#include <algorithm>
#include <cstdint>

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

}  // namespace platform
