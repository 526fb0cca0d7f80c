#pragma once

#include <utility>

#include "platform/Geometry.h"

namespace orvellos {

// Builds an outline step by step.
class PathBuilder {
  public:
    void moveTo(platform::Point point);
    void lineTo(platform::Point point);
    // A tangent arc: from the current point toward `first` and on toward `second`, rounded with the radius.
    // Without a corner to round (a zero radius, points in line) it is the segment to `first`.
    void arcTo(platform::Point first, platform::Point second, double radius);
    void close();
    [[nodiscard]] platform::Path take() { return std::move(path_); }

  private:
    platform::Path path_;
    platform::Point start_;
    platform::Point current_;
};

[[nodiscard]] platform::Path rectanglePath(double width, double height);
// The rectangle from (0, 0) with circular corners.
[[nodiscard]] platform::Path roundedRectanglePath(double width, double height, double radius);

// Whether the point is inside the outline by the even-odd rule; arcs count to within a hundredth of their
// radius.
[[nodiscard]] bool contains(const platform::Path& path, platform::Point point);

}  // namespace orvellos
