#include "orvellos/tags/TagLayout.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "orvellos/base/PathGeometry.h"
#include "orvellos/base/Text.h"

namespace orvellos {

namespace {

using platform::Color;
using platform::Rect;
using platform::Size;

constexpr std::size_t kLongestLabel = 200;        // characters
constexpr std::size_t kMostBytesOfALabel = 4096;  // which one character may exceed
constexpr double kFontOfHeight = 0.45;
constexpr double kLineOfFont = 1.15;
constexpr double kSmallestFont = 8;

double labelX(double height, TagShape shape) {
    return height * (shape == TagShape::Pill ? 0.95 : 1.1);
}

Rect swatchFrame(double height, TagShape shape) {
    const double diameter = height * 0.32;
    const double centerX = shape == TagShape::Pill ? height * 0.41 + diameter / 2 : height * 0.62;
    return {centerX - diameter / 2, height / 2 - diameter / 2, diameter, diameter};
}

// Whether the character is a control (Unicode's C0 and C1 sets) or a line or paragraph separator.
bool isControl(std::string_view cluster) {
    const auto first = static_cast<unsigned char>(cluster.front());
    return first < 0x20 || first == 0x7F || (cluster >= "\u0080" && cluster <= "\u009F") ||
           cluster == "\u2028" || cluster == "\u2029";
}

bool fillsWindow(const TagAppearance& appearance) {
    return appearance.backupStyle && *appearance.backupStyle != MissionControlStyle::Pill;
}

platform::TextLayer textLayer(const TagAppearance& appearance) {
    platform::TextLayer text;
    text.string = displayedLabel(appearance.label);
    text.foreground = appearance.labelColor;
    text.shadow = {0.35, 2, {0, -0.5}};
    return text;
}

platform::TagLayers layOutSilhouette(const Rect& tint, const TagAppearance& appearance) {
    const double h = tint.height;
    const double x = labelX(h, appearance.shape);
    const auto path = outlinePath(appearance.shape, tint.width, h);
    const Rect whole{0, 0, tint.width, h};
    platform::TagLayers layers;
    layers.tintLayer = {
        tint, path, appearance.fill, {0.28, std::max(h * 0.08, 4.0), {0, -std::max(h * 0.02, 1.0)}}};
    layers.highlightLayer = {whole, path, Color{1, 1, 1, 0.22}, Color{1, 1, 1, 0}, false};
    const Rect dot = swatchFrame(h, appearance.shape);
    layers.swatchLayer = {dot, dot.width / 2, Color{1, 1, 1, 0.95}, false};
    layers.textLayer = textLayer(appearance);
    layers.textLayer.fontSize = h * kFontOfHeight;
    const double line = h * kFontOfHeight * kLineOfFont;
    layers.textLayer.frame = {x, h / 2 - line / 2, std::max(0.0, tint.width - x - h * 0.15), line};
    return layers;
}

// The largest font up to `wanted` in which the text is no wider than `available`.
double fittingFont(const std::string& text, double wanted, double available,
                   const platform::TextMeasurer& measurer) {
    const double measured = measurer.heavyTextWidth(text, wanted);
    if (measured <= available) return wanted;
    return std::max(wanted * available / measured, kSmallestFont);
}

platform::TagLayers layOutWholeWindow(const Rect& tint, const TagAppearance& appearance,
                                      const platform::TextMeasurer& measurer) {
    platform::TagLayers layers;
    layers.tintLayer = {tint, rectanglePath(tint.width, tint.height), appearance.fill, platform::Shadow()};
    layers.highlightLayer.hidden = true;
    layers.swatchLayer.hidden = true;
    layers.textLayer = textLayer(appearance);
    auto& text = layers.textLayer;
    const double available = tint.width * 0.9;
    const double wanted =
        tint.height * (appearance.backupStyle == MissionControlStyle::HeaderBar ? 0.65 : 0.5);
    text.fontSize = fittingFont(text.string, wanted, available, measurer);
    const double line = text.fontSize * kLineOfFont;
    text.frame = {tint.width / 2 - available / 2, tint.height / 2 - line / 2, available, line};
    text.alignment = platform::TextLayer::Alignment::Center;
    return layers;
}

}  // namespace

std::string displayedLabel(const std::string& label) {
    std::string line;
    std::size_t count = 0;
    for (const auto cluster : graphemeClusters(label, kLongestLabel + 1)) {
        if (++count > kLongestLabel || line.size() + cluster.size() > kMostBytesOfALabel) return line + "…";
        line += isControl(cluster) ? std::string_view(" ") : cluster;
    }
    return line;
}

Size tagWindowSize(const std::string& label, double baseHeight, TagShape shape,
                   const platform::TextMeasurer& measurer) {
    const double text =
        measurer.heavyTextWidth(displayedLabel(label), std::round(baseHeight * kFontOfHeight));
    const double width =
        std::max(baseHeight * 0.3 + std::ceil(text) + labelX(baseHeight, shape), baseHeight * 2.7);
    return {width + 2 * kTagMargin, baseHeight + 2 * kTagMargin};
}

platform::TagLayers layOutTag(Size window, const TagAppearance& appearance,
                              const platform::TextMeasurer& measurer) {
    const Rect whole{0, 0, window.width, window.height};
    return fillsWindow(appearance) ? layOutWholeWindow(whole, appearance, measurer)
                                   : layOutSilhouette(whole.insetBy(kTagMargin), appearance);
}

}  // namespace orvellos
