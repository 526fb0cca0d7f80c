#pragma once

#include <optional>
#include <string>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Path.h"

namespace platform {

// A black shadow below a layer. `radius` and `offset` are points, y upward.
struct Shadow {
    double opacity = 0;
    double radius = 0;
    Point offset;
    bool operator==(const Shadow&) const = default;
};

// A filled outline (even-odd), in the coordinates of its frame.
struct ShapeLayer {
    Rect frame;  // in the window's content
    Path path;
    Color fill;
    Shadow shadow;
    bool operator==(const ShapeLayer&) const = default;
};

// A vertical gradient over its frame, masked by an outline in the coordinates of its frame.
struct GradientLayer {
    Rect frame;
    Path mask;
    Color top;
    Color bottom;
    bool hidden = false;
    bool operator==(const GradientLayer&) const = default;
};

// A filled circle or rounded rectangle.
struct PlainLayer {
    Rect frame;
    double cornerRadius = 0;
    Color background;
    bool hidden = false;
    bool operator==(const PlainLayer&) const = default;
};

// One line of text in the system font, weight heavy, never wrapped or truncated.
struct TextLayer {
    enum class Alignment { Left, Center };
    std::string string;
    double fontSize = 0;  // points
    Color foreground;
    Rect frame;  // the line is centred vertically in it
    Alignment alignment = Alignment::Left;
    Shadow shadow;
    bool operator==(const TextLayer&) const = default;
};

// What a tag window shows, back to front. Frames of the inner layers are relative to the tint layer's frame.
struct TagLayers {
    ShapeLayer tintLayer;
    GradientLayer highlightLayer;
    PlainLayer swatchLayer;
    TextLayer textLayer;
    bool operator==(const TagLayers&) const = default;
};

}  // namespace platform
