#pragma once

namespace platform {

// An sRGB colour, each component in 0…1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const Color&) const = default;
};

}  // namespace platform
