#pragma once

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "platform/RunLoop.h"
#include "platform/x11/connection/Backoff.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/screens/CoordinateSpace.h"

namespace platform::x11 {

// Tells which full-screen windows are in front on their desktops, and so should cover what floats: all that
// the active window does not lie before. One that is active on another monitor leaves them in front.
class FullScreenWindows {
  public:
    static constexpr std::array<std::string_view, 6> kAtomNames = {
        "_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW",   "_NET_WM_STATE",
        "_NET_WM_STATE_FULLSCREEN",  "_NET_WM_STATE_HIDDEN", "_NET_WM_DESKTOP"};

    // `changed` is called when the answers below may be others.
    FullScreenWindows(XConnection& connection, XEvents& events, RunLoop& runLoop,
                      std::function<void()> changed);

    // A window as its owner knows it.
    struct Subject {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<std::uint32_t> desktop;
        PixelRect place;
    };
    // Whether one of them covers the place on that desktop.
    [[nodiscard]] bool covers(const Subject& subject) const;
    // Whether the window manager stacks the window above one that covers it.
    [[nodiscard]] bool liesBefore(const Subject& subject) const;

  private:
    struct Window {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<std::uint32_t> desktop = std::nullopt;
        PixelRect place = {};
        std::vector<xcb_window_t> above = {};  // it in the stacking order
        bool operator==(const Window&) const = default;
    };
    struct Stack {
        std::vector<xcb_window_t> windows;  // bottom to top
        xcb_window_t active = XCB_WINDOW_NONE;
    };

    void handle(const xcb_generic_event_t& event);
    void follow(xcb_window_t window);
    void readLater(Duration delay);
    void read();
    [[nodiscard]] Stack readStack();
    [[nodiscard]] std::vector<Window> readFullScreen(const Stack& stack);
    void readPlaces(std::span<Window> windows);
    [[nodiscard]] static bool covers(const Window& window, const Subject& subject);

    XConnection& connection_;
    RunLoop& runLoop_;
    std::function<void()> changed_;
    xcb_atom_t stacking_ = 0;
    xcb_atom_t activeWindow_ = 0;
    xcb_atom_t state_ = 0;
    xcb_atom_t fullScreen_ = 0;
    xcb_atom_t hidden_ = 0;
    xcb_atom_t desktop_ = 0;
    std::set<xcb_window_t> followed_;  // those that have been active or in full screen
    std::vector<Window> inFront_;
    Backoff backoff_;
    Timer readTimer_;
    Subscription subscription_;
};

}  // namespace platform::x11
