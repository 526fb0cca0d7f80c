#include "platform/x11/windows/MouseGesture.h"

#include <utility>

namespace platform::x11 {

namespace {
constexpr auto kWatchInterval = std::chrono::milliseconds(250);
}

void MouseGesture::handle(const xcb_generic_event_t& event) {
    // Button and motion events share their layout.
    const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(event);
    const MouseEvent mouse{context_.screens.coordinates().pointerAt(button.root_x, button.root_y),
                           (button.state & XCB_MOD_MASK_SHIFT) != 0};
    const auto type = XEvents::type(event);
    if (type == XCB_MOTION_NOTIFY && isHeld_) {
        drag_ = mouse;
        if (!dragTimer_.isActive())
            dragTimer_ = context_.runLoop.after(Duration::zero(), [this] { deliverDrag(); });
    }
    if (button.detail != 1) return;
    if (type == XCB_BUTTON_PRESS) {
        isHeld_ = true;
        watchTimer_ = context_.runLoop.every(kWatchInterval, Duration::zero(), [this] { watch(); });
        delegate_.mouseDown(mouse);
    } else if (type == XCB_BUTTON_RELEASE && isHeld_) {
        deliverDrag();
        end();
        delegate_.mouseUp(mouse);
    }
}

void MouseGesture::deliverDrag() {
    dragTimer_.cancel();
    if (const auto drag = std::exchange(drag_, std::nullopt)) delegate_.mouseDragged(*drag);
}

// A window that leaves the screen under a held button gets no release event.
void MouseGesture::watch() {
    const auto cookie = xcb_query_pointer(context_.connection.get(), context_.connection.root());
    const auto pointer = context_.connection.reply<xcb_query_pointer_reply_t>(cookie);
    if (!pointer || (pointer->mask & XCB_BUTTON_MASK_1) != 0) return;
    // A release event that did come is handled before the next interval is over.
    watchTimer_ = context_.runLoop.after(kWatchInterval, [this] {
        end();
        delegate_.mouseCancelled();
    });
}

void MouseGesture::end() {
    isHeld_ = false;
    drag_.reset();
    dragTimer_.cancel();
    watchTimer_.cancel();
}

}  // namespace platform::x11
