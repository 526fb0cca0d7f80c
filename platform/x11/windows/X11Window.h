#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "platform/WindowList.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// A top-level window as the server and the window manager describe it.
struct X11Window {
    WindowInfo info;                       // ownerName only when the window names its class
    std::optional<std::uint32_t> desktop;  // kEveryDesktop, or an index
    bool isDesktopElement = false;
};

struct X11WindowRequest {
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t position;
    xcb_get_property_cookie_t frameExtents, desktop, types, states, windowClass, pid, opacity;
};
struct X11WindowReplies {
    Reply<xcb_get_geometry_reply_t> geometry;
    Reply<xcb_translate_coordinates_reply_t> position;
    Reply<xcb_get_property_reply_t> frameExtents, desktop, types, states, windowClass, pid, opacity;
};
[[nodiscard]] X11WindowRequest requestWindow(const XConnection& connection, const Atoms& atoms,
                                             xcb_window_t window);
// Absent for a window that has died meanwhile. `origin` is where the main display starts on the root window.
[[nodiscard]] std::optional<X11Window> parseWindow(const Atoms& atoms, xcb_window_t window,
                                                   const X11WindowReplies& replies, Point origin);

}  // namespace platform::x11
