#include "platform/x11/windows/WindowFrame.h"

#include <algorithm>

namespace platform::x11 {

namespace {

constexpr int kDeepest = 3;        // levels: a window manager puts a window in a frame or two
constexpr int kWidestBorder = 40;  // pixels around a frame in which it can be resized

bool areOfOneProgram(const XConnection& connection, xcb_window_t a, xcb_window_t b) {
    return ((a ^ b) & ~xcb_get_setup(connection.get())->resource_id_mask) == 0;
}

std::vector<xcb_window_t> childrenOf(XConnection& connection, const std::vector<xcb_window_t>& parents) {
    std::vector<xcb_query_tree_cookie_t> cookies;
    cookies.reserve(parents.size());
    for (const auto parent : parents) cookies.push_back(xcb_query_tree(connection.get(), parent));
    std::vector<xcb_window_t> children;
    for (const auto cookie : cookies) {
        const auto tree = connection.reply<xcb_query_tree_reply_t>(cookie);
        if (!tree) continue;
        const auto* first = xcb_query_tree_children(tree.get());
        children.insert(children.end(), first, first + xcb_query_tree_children_length(tree.get()));
    }
    return children;
}

// The windows in a frame belong to another program than the frame and its parts.
std::vector<xcb_window_t> windowsInside(XConnection& connection, xcb_window_t frame) {
    std::vector<xcb_window_t> level = {frame};
    for (int depth = 0; depth < kDeepest; ++depth) {
        level = childrenOf(connection, level);
        const auto others = std::partition(level.begin(), level.end(), [&](xcb_window_t part) {
            return areOfOneProgram(connection, part, frame);
        });
        if (others != level.end()) return {others, level.end()};
    }
    return {};
}

// Whether `outer` is a little larger than `inner` on all sides.
bool surrounds(XConnection& connection, xcb_window_t outer, xcb_window_t inner) {
    const auto outerCookie = xcb_get_geometry(connection.get(), outer);
    const auto innerCookie = xcb_get_geometry(connection.get(), inner);
    const auto out = connection.reply<xcb_get_geometry_reply_t>(outerCookie);
    const auto in = connection.reply<xcb_get_geometry_reply_t>(innerCookie);
    if (!out || !in) return false;
    const auto isBorder = [](int width) { return width >= 0 && width <= kWidestBorder; };
    return isBorder(in->x - out->x) && isBorder(in->y - out->y) &&
           isBorder(out->x + out->width - in->x - in->width) &&
           isBorder(out->y + out->height - in->y - in->height);
}

// The frame right below the window in the stack when the window is its border, else XCB_WINDOW_NONE.
xcb_window_t frameInside(XConnection& connection, xcb_window_t border) {
    const auto stack = childrenOf(connection, {connection.root()});  // bottom to top
    const auto found = std::ranges::find(stack, border);
    if (found == stack.begin() || found == stack.end()) return XCB_WINDOW_NONE;
    const auto below = *std::prev(found);
    const bool isFrame = areOfOneProgram(connection, below, border) && surrounds(connection, border, below);
    return isFrame ? below : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace

std::vector<xcb_window_t> windowsInFrame(XConnection& connection, xcb_window_t top) {
    auto windows = windowsInside(connection, top);
    if (!windows.empty()) return windows;
    const auto frame = frameInside(connection, top);
    return frame == XCB_WINDOW_NONE ? windows : windowsInside(connection, frame);
}

}  // namespace platform::x11
