#include "platform/x11/windows/TagPlacement.h"

#include <xcb/xcb_icccm.h>

#include <array>

namespace platform::x11 {

namespace {
constexpr auto kSettlingTime = std::chrono::milliseconds(250);
constexpr int kMostInsistences = 4;
}  // namespace

TagPlacement::TagPlacement(TagSurfaceContext& context, TagSurfaceOwner& owner, TagWindowDelegate& delegate,
                           xcb_window_t window, const Rect& frame)
    : context_(context),
      owner_(owner),
      delegate_(delegate),
      window_(window),
      frame_(frame),
      current_(wanted(false)) {}

void TagPlacement::setFrame(const Rect& frame) {
    frame_ = frame;
    refused_.reset();
    insistences_ = 0;
}

PixelRect TagPlacement::wanted(bool isParked) const {
    const auto place = context_.screens.coordinates().toPixels(frame_);
    if (!isParked) return place;
    return {place.x + place.width / 2, place.y + place.height / 2, 1, 1};
}

void TagPlacement::moveTo(const PixelRect& place) {
    if (place == current_) return;
    current_ = place;
    writeHints();
    constexpr std::uint16_t mask =
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    const std::array<std::int32_t, 4> values = {place.x, place.y, place.width, place.height};
    xcb_configure_window(context_.connection.get(), window_, mask, values.data());
}

// A place and size that are the user's own are kept by every window manager.
void TagPlacement::writeHints() const {
    xcb_size_hints_t hints{};
    hints.flags = XCB_ICCCM_SIZE_HINT_US_POSITION | XCB_ICCCM_SIZE_HINT_US_SIZE |
                  XCB_ICCCM_SIZE_HINT_P_POSITION | XCB_ICCCM_SIZE_HINT_P_SIZE |
                  XCB_ICCCM_SIZE_HINT_P_WIN_GRAVITY;
    hints.x = current_.x;
    hints.y = current_.y;
    hints.width = current_.width;
    hints.height = current_.height;
    hints.win_gravity = XCB_GRAVITY_STATIC;
    xcb_icccm_set_wm_normal_hints(context_.connection.get(), window_, &hints);
}

void TagPlacement::verifyLater() {
    timer_ = context_.runLoop.after(kSettlingTime, [this] { verify(); });
}

void TagPlacement::verify() {
    if (!owner_.isAtRest()) return;
    auto* connection = context_.connection.get();
    const auto originCookie =
        xcb_translate_coordinates(connection, window_, context_.connection.root(), 0, 0);
    const auto sizeCookie = xcb_get_geometry(connection, window_);
    const auto origin = context_.connection.reply<xcb_translate_coordinates_reply_t>(originCookie);
    const auto size = context_.connection.reply<xcb_get_geometry_reply_t>(sizeCookie);
    if (context_.connection.isLate()) verifyLater();
    if (!origin || !size) return;
    const PixelRect actual{origin->dst_x, origin->dst_y, size->width, size->height};
    if (actual == current_ || refused_ == actual) return;
    current_ = actual;
    if (insistences_++ >= kMostInsistences) {
        refused_ = actual;
        frame_ = delegate_.constrainFrame(context_.screens.coordinates().toPoints(actual));
    }
    owner_.commitLater();
}

}  // namespace platform::x11
