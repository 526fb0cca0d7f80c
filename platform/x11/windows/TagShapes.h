#pragma once

#include <xcb/shape.h>

#include <cstdint>
#include <optional>

#include "platform/Windows.h"
#include "platform/x11/windows/TagSurfaceContext.h"

namespace platform::x11 {

// The shapes of a tag's window (Shape extension): its bounding shape, in which it is seen, and its input
// shape, in which it takes the mouse. One that is there already is not sent again.
class TagShapes {
  public:
    enum class Extent { Nothing, Silhouette, Everything };
    // What the silhouette is of. The version counts the changes of the layers' outline.
    struct Outline {
        const TagLayers& layers;
        unsigned version = 0;
        PaintGeometry geometry;
    };

    TagShapes(TagSurfaceContext& context, xcb_window_t window) : context_(context), window_(window) {}

    void setBounding(Extent extent, const Outline& outline) {
        set(XCB_SHAPE_SK_BOUNDING, bounding_, extent, outline);
    }
    void setInput(Extent extent, const Outline& outline) { set(XCB_SHAPE_SK_INPUT, input_, extent, outline); }
    // Has the input shape sent again when it is next set.
    void forgetInput() { input_.reset(); }

  private:
    struct Shape {
        Extent extent = Extent::Nothing;
        unsigned version = 0;
        PaintGeometry geometry = {};
        bool operator==(const Shape&) const = default;
    };
    void set(xcb_shape_kind_t kind, std::optional<Shape>& sent, Extent extent, const Outline& outline);

    TagSurfaceContext& context_;
    const xcb_window_t window_;
    std::optional<Shape> bounding_;
    std::optional<Shape> input_;
};

}  // namespace platform::x11
