#pragma once

#include <optional>

#include "platform/Windows.h"
#include "platform/x11/windows/TagShapes.h"
#include "platform/x11/windows/TagSurfaceOwner.h"

namespace platform::x11 {

// What a tag's window looks like: its pixels, which the server keeps as the window's background, its opacity
// and its shapes. The setters say what it should look like; the steps of a commit send what has changed.
class TagPixels {
  public:
    TagPixels(TagSurfaceContext& context, TagSurfaceOwner& owner, xcb_window_t window)
        : context_(context), owner_(owner), window_(window), shapes_(context, window) {}

    void setLayers(const TagLayers& layers);
    void setContentScale(double scale) { geometry_.contentScale = scale; }
    // False when it was so before, as for the next one.
    bool setAlpha(double alpha);
    bool setTakesMouse(bool takesMouse);
    // What there is was drawn for other surroundings.
    void outdate();
    // Sends the input shape again, after a while.
    void resendInputShapeLater();
    [[nodiscard]] double alpha() const { return alpha_; }

    // The steps of a commit: before the window is moved to that place its pixels are those for there, and
    // they are shown when it is there and has its shapes. `upload` says whether there is anything to show.
    [[nodiscard]] bool upload(const PixelRect& place);
    void sendOpacityAndShapes();
    void show() const;

  private:
    // What pixels are drawn of.
    struct Drawing {
        unsigned version = 0;
        PaintGeometry geometry;
        bool operator==(const Drawing&) const = default;
    };
    void sendImage(const PixelImage& image);
    void release();
    void sendShapes();

    TagSurfaceContext& context_;
    TagSurfaceOwner& owner_;
    const xcb_window_t window_;
    TagLayers layers_;
    PaintGeometry geometry_;
    unsigned version_ = 0;         // counts the changes of the layers
    unsigned outlineVersion_ = 0;  // counts those of their outline
    double alpha_ = 1;
    bool takesMouse_ = false;
    std::optional<double> sentAlpha_;
    std::optional<Drawing> painted_;  // absent while the window keeps no pixels
    TagShapes shapes_;
    Timer clearedTimer_;  // runs while the window is still there, but transparent
    Timer resendTimer_;
};

}  // namespace platform::x11
