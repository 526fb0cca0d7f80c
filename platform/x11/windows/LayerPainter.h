#pragma once

#include <cstdint>
#include <vector>

#include "platform/Windows.h"
#include "platform/x11/screens/CoordinateSpace.h"

namespace platform::x11 {

// An image of premultiplied ARGB pixels in the machine's byte order, rows from the top, without padding.
struct PixelImage {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels;
};

// The size and the density of a drawing.
struct PaintGeometry {
    std::int32_t width = 0;  // pixels
    std::int32_t height = 0;
    double scale = 1;         // pixels per point
    double contentScale = 1;  // of the drawing around its centre
    bool operator==(const PaintGeometry&) const = default;
};

// Turns layers into pixels.
class LayerPainter {
  public:
    virtual ~LayerPainter() = default;

    // With `translucent` false there is no compositor: the image is opaque and without shadow, to be cut out
    // by the silhouette.
    [[nodiscard]] virtual PixelImage paint(const TagLayers& layers, const PaintGeometry& geometry,
                                           bool translucent) = 0;
    // The pixels of the tint layer's outline as rectangles, origin at the top left.
    [[nodiscard]] virtual std::vector<PixelRect> silhouette(const TagLayers& layers,
                                                            const PaintGeometry& geometry) = 0;
};

}  // namespace platform::x11
