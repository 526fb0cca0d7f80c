#include "platform/x11/windows/TagPixels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace platform::x11 {

namespace {
constexpr auto kShapeResendDelay = std::chrono::milliseconds(400);
constexpr auto kClearedTime = std::chrono::milliseconds(500);
}  // namespace

void TagPixels::setLayers(const TagLayers& layers) {
    if (layers.tintLayer != layers_.tintLayer) ++outlineVersion_;
    if (layers != layers_) ++version_;
    layers_ = layers;
}

bool TagPixels::setAlpha(double alpha) {
    const double before = std::exchange(alpha_, std::clamp(alpha, 0.0, 1.0));
    return alpha_ != before;
}

bool TagPixels::setTakesMouse(bool takesMouse) {
    return std::exchange(takesMouse_, takesMouse) != takesMouse;
}

void TagPixels::outdate() {
    ++version_;
    ++outlineVersion_;
}

void TagPixels::resendInputShapeLater() {
    resendTimer_ = context_.runLoop.after(kShapeResendDelay, [this] {
        shapes_.forgetInput();
        owner_.commitLater();
    });
}

bool TagPixels::upload(const PixelRect& place) {
    geometry_.width = place.width;
    geometry_.height = place.height;
    geometry_.scale = context_.screens.coordinates().scale();
    const Drawing wanted{version_, geometry_};
    if (alpha_ <= 0 || painted_ == wanted) return false;
    sendImage(context_.painter.paint(layers_, geometry_, context_.composited));
    painted_ = wanted;
    return true;
}

void TagPixels::sendImage(const PixelImage& image) {
    auto* connection = context_.connection.get();
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    const auto width = static_cast<std::uint16_t>(image.width);
    xcb_create_pixmap(connection, context_.depth, pixmap, window_, width,
                      static_cast<std::uint16_t>(image.height));
    const xcb_gcontext_t gc = xcb_generate_id(connection);
    xcb_create_gc(connection, gc, pixmap, 0, nullptr);
    // A request carries a bounded number of bytes, so tall images travel in bands.
    const auto most = static_cast<std::int32_t>(xcb_get_maximum_request_length(connection)) - 64;
    const auto band = std::max(most / std::max(image.width, 1), 1);
    for (std::int32_t y = 0; y < image.height; y += band) {
        const auto rows = std::min(band, image.height - y);
        const auto first = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width);
        const auto count = static_cast<std::uint32_t>(rows * image.width * 4);
        xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, width,
                      static_cast<std::uint16_t>(rows), 0, static_cast<std::int16_t>(y), 0, context_.depth,
                      count, reinterpret_cast<const std::uint8_t*>(image.pixels.data() + first));
    }
    xcb_change_window_attributes(connection, window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_free_gc(connection, gc);
    xcb_free_pixmap(connection, pixmap);
}

void TagPixels::sendOpacityAndShapes() {
    if (alpha_ > 0 && sentAlpha_ != alpha_) {
        setProperty32(context_.connection, window_, context_.atoms[Atom::NetWmWindowOpacity],
                      XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(std::lround(alpha_ * 4294967295.0))});
        sentAlpha_ = alpha_;
    }
    if (alpha_ > 0)
        clearedTimer_.cancel();
    else if (painted_)
        release();
    sendShapes();
}

// A compositor's overview draws what it last saw of a window, and does not look again at one that has become
// nothing. So the window is seen cleared for a while before it does.
void TagPixels::release() {
    const std::uint32_t transparent = 0;
    xcb_change_window_attributes(context_.connection.get(), window_, XCB_CW_BACK_PIXEL, &transparent);
    painted_.reset();
    if (!context_.composited) return;
    show();
    clearedTimer_ = context_.runLoop.after(kClearedTime, [this] {
        clearedTimer_.cancel();
        owner_.commitLater();
    });
}

// A press that has begun keeps the pointer until its release, whatever the input shape.
void TagPixels::sendShapes() {
    using Extent = TagShapes::Extent;
    const bool isSeen = alpha_ > 0 || (context_.composited && clearedTimer_.isActive());
    const auto shown = context_.composited ? Extent::Everything : Extent::Silhouette;
    shapes_.setBounding(isSeen ? shown : Extent::Nothing, {layers_, outlineVersion_, geometry_});
    auto natural = geometry_;
    natural.contentScale = 1;
    shapes_.setInput(takesMouse_ ? Extent::Silhouette : Extent::Nothing, {layers_, outlineVersion_, natural});
}

void TagPixels::show() const {
    xcb_clear_area(context_.connection.get(), 0, window_, 0, 0, 0, 0);
}

}  // namespace platform::x11
