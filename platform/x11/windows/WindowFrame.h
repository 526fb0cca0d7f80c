#pragma once

#include <vector>

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// The windows that a window manager has put in the frame `top`, a child of the root window; empty when `top`
// is no frame. KWin gives a frame without borders an unseen window around it, just above it in the stack; for
// that window the windows in the frame are returned.
[[nodiscard]] std::vector<xcb_window_t> windowsInFrame(XConnection& connection, xcb_window_t top);

}  // namespace platform::x11
