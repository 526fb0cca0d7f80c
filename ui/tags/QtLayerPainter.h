#pragma once

#include "platform/Windows.h"
#include "platform/x11/windows/LayerPainter.h"

namespace ui {

// Measures texts in the font that tags are written in.
class QtTextMeasurer final : public platform::TextMeasurer {
  public:
    [[nodiscard]] double heavyTextWidth(std::string_view text, double fontSize) const override;
};

// Paints tags with Qt's raster engine.
class QtLayerPainter final : public platform::x11::LayerPainter {
  public:
    [[nodiscard]] platform::x11::PixelImage paint(const platform::TagLayers& layers,
                                                  const platform::x11::PaintGeometry& geometry,
                                                  bool translucent) override;
    [[nodiscard]] std::vector<platform::x11::PixelRect> silhouette(
        const platform::TagLayers& layers, const platform::x11::PaintGeometry& geometry) override;
};

}  // namespace ui
