#include "platform/x11/input/X11MouseMonitor.h"

#include <algorithm>
#include <utility>

#include "platform/x11/windows/WindowFrame.h"

namespace platform::x11 {

namespace {

// The buttons as X counts them.
constexpr std::uint32_t kLeft = 1;
constexpr std::uint32_t kRight = 3;
// Window managers put a window in a frame or two; a tray puts an icon a little deeper.
constexpr int kDeepestLevel = 8;

bool belongsTo(xcb_connection_t* connection, xcb_window_t window) {
    const auto* setup = xcb_get_setup(connection);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

}  // namespace

Subscription X11MouseMonitor::addLocalMouseDownMonitor(std::function<void(WindowNumber)> handler) {
    if (!input_.isAvailable()) return {};
    follow();
    return local_.subscribe(std::move(handler));
}

Subscription X11MouseMonitor::addGlobalMouseDownMonitor(std::function<void()> handler) {
    if (!input_.isAvailable()) return {};
    follow();
    return global_.subscribe(std::move(handler));
}

void X11MouseMonitor::follow() {
    if (events_.isActive()) return;
    input_.select(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
    events_ = input_.subscribe([this](const auto& event) { handle(event); });
}

void X11MouseMonitor::handle(const RawInputEvent& event) {
    if (event.type != XCB_INPUT_RAW_BUTTON_PRESS) return;
    if (event.detail != kLeft && event.detail != kRight) return;
    if (local_.isEmpty() && global_.isEmpty()) return;
    if (toolkit_.isMenuClick(event.time)) return;
    const auto window = ownWindowUnderPointer();
    if (connection_.isLate()) return;
    if (window == XCB_WINDOW_NONE)
        global_.notify();
    else
        local_.notify({window});
}

bool X11MouseMonitor::isOwn(xcb_window_t window) const {
    return belongsTo(connection_.get(), window) || belongsTo(toolkit_.connection(), window);
}

xcb_window_t X11MouseMonitor::ownWindowUnderPointer() {
    xcb_window_t top = XCB_WINDOW_NONE;
    auto window = connection_.root();
    for (int depth = 0; depth < kDeepestLevel; ++depth) {
        const auto cookie = xcb_query_pointer(connection_.get(), window);
        const auto pointer = connection_.reply<xcb_query_pointer_reply_t>(cookie);
        if (!pointer || pointer->child == XCB_WINDOW_NONE) break;
        window = pointer->child;
        if (isOwn(window)) return window;
        if (top == XCB_WINDOW_NONE) top = window;
    }
    if (top == XCB_WINDOW_NONE) return top;
    const auto framed = windowsInFrame(connection_, top);
    const auto own = std::ranges::find_if(framed, [this](xcb_window_t each) { return isOwn(each); });
    return own == framed.end() ? xcb_window_t{XCB_WINDOW_NONE} : *own;
}

}  // namespace platform::x11
