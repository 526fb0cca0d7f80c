#pragma once

#include <fmt/format.h>

#include <string>

#include "platform/Geometry.h"

namespace orvellos {

// Geometry as log lines show it.
[[nodiscard]] inline std::string describe(const platform::Point& point) {
    return fmt::format("({:.1f}, {:.1f})", point.x, point.y);
}
[[nodiscard]] inline std::string describe(const platform::Rect& rect) {
    return fmt::format("({:.1f}, {:.1f}, {:.1f}, {:.1f})", rect.x, rect.y, rect.width, rect.height);
}

}  // namespace orvellos
