#pragma once

#include <functional>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "platform/RunLoop.h"
#include "platform/linux/Backoff.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/screens/CoordinateSpace.h"

namespace platform::x11 {

// Knows the full-screen windows in front on their desktops, which should cover tags: every full-screen window
// that the active window does not lie before. A window that is active on another monitor leaves it in front.
class FullScreenWindows {
  public:
    // `changed` is called when the answers below may have changed.
    FullScreenWindows(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                      std::function<void()> changed);

    // A window of this program, as its owner knows it.
    struct Subject {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<std::uint32_t> desktop;
        PixelRect place;
    };
    // Whether a full-screen window in front covers the subject's place on its desktop.
    [[nodiscard]] bool covers(const Subject& subject) const;
    // Whether the window manager stacks the subject above a full-screen window that covers it.
    [[nodiscard]] bool liesBefore(const Subject& subject) const;

  private:
    struct Window {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<std::uint32_t> desktop = std::nullopt;
        PixelRect place = {};
        std::vector<xcb_window_t> above = {};  // the windows above it in the stacking order
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
    const Atoms& atoms_;
    RunLoop& runLoop_;
    std::function<void()> changed_;
    std::set<xcb_window_t> followed_;  // have been active or in full screen
    std::vector<Window> inFront_;
    Backoff backoff_;
    Timer readTimer_;
    Subscription subscription_;
};

}  // namespace platform::x11
