#pragma once

#include <string_view>

namespace platform {

// Measures text as it will be drawn.
class TextMeasurer {
  public:
    virtual ~TextMeasurer() = default;
    // The width in points of one line in the system font, weight heavy, at `fontSize` points.
    [[nodiscard]] virtual double heavyTextWidth(std::string_view text, double fontSize) const = 0;
};

}  // namespace platform
