#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace platform {

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

}  // namespace platform
