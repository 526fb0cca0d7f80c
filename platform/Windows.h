#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Geometry.h"

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

// Measures text as it will be drawn.
class TextMeasurer {
  public:
    virtual ~TextMeasurer() = default;
    // The width in points of one line in the system font, weight heavy, at `fontSize` points.
    [[nodiscard]] virtual double heavyTextWidth(std::string_view text, double fontSize) const = 0;
};

// The window server's number for a window.
struct WindowNumber {
    std::int64_t value = 0;
    auto operator<=>(const WindowNumber&) const = default;
};

// A mouse event on a window; `location` is in screen coordinates.
struct MouseEvent {
    Point location;
    bool shiftHeld = false;
};

// What a tag window's owner is told, on the main thread.
class TagWindowDelegate {
  public:
    virtual ~TagWindowDelegate() = default;

    virtual void mouseDown(const MouseEvent& event) = 0;
    virtual void mouseDragged(const MouseEvent& event) = 0;
    virtual void mouseUp(const MouseEvent& event) = 0;
    // The gesture ended unseen, as when the window went off the screen under the pointer.
    virtual void mouseCancelled() = 0;
    // The desktop wants the window at `proposed`; the answer is where the window goes.
    virtual Rect constrainFrame(const Rect& proposed) = 0;
};

struct WindowState {
    bool visible = false;        // ordered in
    bool onActiveSpace = false;  // its Space is the current one
    bool unobscured = false;     // some of it can be seen
};

// A borderless, transparent, floating window on one Space. It never takes the focus and is in no task list.
class TagSurface {
  public:
    virtual ~TagSurface() = default;

    [[nodiscard]] virtual WindowNumber number() const = 0;
    [[nodiscard]] virtual WindowState state() const = 0;
    // Moves and sizes the window.
    virtual void setFrame(const Rect& frame) = 0;
    // 0…1. At 0 the window neither paints nor takes a click, but stays on its Space.
    virtual void setAlpha(double alpha) = 0;
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    // What is drawn, and (tint layer) which part takes clicks and shows the open-hand cursor. `title` is what
    // assistive programs say.
    virtual void setContents(const TagLayers& layers, const std::string& title) = 0;
    // Scales the drawing around the window's centre; 1 is the natural size.
    virtual void setContentScale(double scale) = 0;
    // In front of the other windows without activating the application, or off the screen. Takes effect at
    // the end of this turn of the main loop, after a Space asked for in the same turn.
    virtual void setOrderedIn(bool orderedIn) = 0;
};

// Makes tag windows.
class WindowSystem {
  public:
    virtual ~WindowSystem() = default;

    // The surface is made at `frame`, alpha 1, ordered out. `acceptsMouse`
    // is false for a window that never takes clicks. Never null.
    virtual std::unique_ptr<TagSurface> makeTagSurface(const Rect& frame, bool acceptsMouse,
                                                       TagWindowDelegate& delegate) = 0;
    // Whether a tag window lets the clicks beside its tint layer's outline through by itself. Otherwise
    // its owner has to follow the pointer and have it ignore the mouse there.
    [[nodiscard]] virtual bool takesClicksOnOutlineOnly() const = 0;
};

}  // namespace platform
