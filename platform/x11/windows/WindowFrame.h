#pragma once

#include <vector>

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// The windows that a window manager has put in the frame `top`, a child of the root window; empty when it is
// no frame. A frame without borders has them around it in KWin: an unseen window just above the frame, for
// which it is the windows in that frame.
[[nodiscard]] std::vector<xcb_window_t> windowsInFrame(XConnection& connection, xcb_window_t top);

}  // namespace platform::x11
