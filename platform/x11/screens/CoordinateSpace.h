#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/Geometry.h"

namespace platform::x11 {

// A rectangle as the X server counts: device pixels, origin at the top left of the root window, y downward.
struct PixelRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const PixelRect&) const = default;
};

// The one place where the application's points (origin at the lower left of the main screen, y upward) and
// the X server's pixels are converted into each other.
class CoordinateSpace {
  public:
    CoordinateSpace() = default;
    CoordinateSpace(const PixelRect& mainScreen, double scale) : mainScreen_(mainScreen), scale_(scale) {}

    // Device pixels per point.
    [[nodiscard]] double scale() const { return scale_; }
    [[nodiscard]] Point toPoints(std::int32_t pixelX, std::int32_t pixelY) const {
        return {(pixelX - mainScreen_.x) / scale_, (mainScreen_.y + mainScreen_.height - pixelY) / scale_};
    }
    // Where the pointer is when the server says that it is on that pixel: at the pixel's centre, which every
    // rectangle that has the pixel contains.
    [[nodiscard]] Point pointerAt(std::int32_t pixelX, std::int32_t pixelY) const {
        const Point corner = toPoints(pixelX, pixelY);
        return {corner.x + 0.5 / scale_, corner.y - 0.5 / scale_};
    }
    [[nodiscard]] Rect toPoints(const PixelRect& r) const {
        const Point lowerLeft = toPoints(r.x, r.y + r.height);
        return {lowerLeft.x, lowerLeft.y, r.width / scale_, r.height / scale_};
    }
    // Rounded to whole pixels; a window keeps its size wherever it is moved to, and is never smaller than one
    // pixel.
    [[nodiscard]] PixelRect toPixels(const Rect& r) const {
        return {mainScreen_.x + rounded(r.minX() * scale_),
                mainScreen_.y + mainScreen_.height - rounded(r.maxY() * scale_),
                std::max(rounded(r.width * scale_), 1), std::max(rounded(r.height * scale_), 1)};
    }

    bool operator==(const CoordinateSpace&) const = default;

  private:
    // The X protocol carries positions and sizes in 16 bits.
    static std::int32_t rounded(double value) {
        return static_cast<std::int32_t>(std::lround(std::clamp(value, -30000.0, 30000.0)));
    }

    PixelRect mainScreen_;
    double scale_ = 1;
};

}  // namespace platform::x11
