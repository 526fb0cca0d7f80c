#pragma once

#include <cstdint>
#include <functional>

#include "platform/RunLoop.h"
#include "platform/linux/OverviewSource.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/screens/X11Screens.h"
#include "platform/x11/spaces/EwmhDesktops.h"
#include "platform/x11/windows/FullScreenWindows.h"
#include "platform/x11/windows/LayerPainter.h"

namespace platform::x11 {

// Shared by all tag surfaces of a window system.
struct TagSurfaceContext {
    XConnection& connection;
    const Atoms& atoms;
    RunLoop& runLoop;
    const X11Screens& screens;
    LayerPainter& painter;
    const DesktopSource& desktops;
    xcb_visualid_t visual = 0;
    std::uint8_t depth = 0;
    xcb_colormap_t colormap = 0;
    xcb_cursor_t openHand = 0;
    bool composited = false;
    OverviewKind overview = OverviewKind::None;  // the one that the desktop shows
    bool overviewMayOpen = false;
    const FullScreenWindows* fullScreenWindows = nullptr;  // never null once there are surfaces
    std::function<void(xcb_window_t)> forget = {};
};

}  // namespace platform::x11
