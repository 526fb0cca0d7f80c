#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Spaces.h"
#include "platform/linux/DesktopRow.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// How many desktops there are, and which one is current, counted from 0.
struct DesktopFacts {
    std::uint32_t count = 0;
    std::optional<std::uint32_t> current;
};

// Answers this layer's questions about the desktops and their window manager.
class DesktopSource {
  public:
    virtual ~DesktopSource() = default;

    [[nodiscard]] virtual DesktopFacts facts() const = 0;
    // Whether the window manager takes the message that switches the desktop.
    [[nodiscard]] virtual bool canSwitch() const = 0;
    // A server time stamp for messages to the window manager.
    [[nodiscard]] virtual xcb_timestamp_t lastTime() const = 0;
};

// Windows beyond these in a window manager's list (EWMH _NET_CLIENT_LIST) do not count.
inline constexpr std::uint32_t kMostClients = 4096;
// A window's desktop number that means every desktop (EWMH _NET_WM_DESKTOP).
inline constexpr std::uint32_t kEveryDesktop = 0xFFFFFFFF;

// The environment variable that tells a program which moves on from the current desktop that desktop's
// number, counted from 0. The program's starter may know it better than the root window.
inline constexpr const char* kCurrentDesktopVariable = "ORVELLO_CURRENT_DESKTOP";

// What the window manager says about its desktops (EWMH 1.5, root window properties).
struct EwmhDesktops {
    std::uint32_t count = 0;               // 1…kMostDesktops
    std::optional<std::uint32_t> current;  // below count
    bool canSwitch = false;                // it takes _NET_CURRENT_DESKTOP messages
    std::string windowManager;             // its name; empty when it tells none

    [[nodiscard]] bool isKwin() const { return windowManager == "KWin"; }
};

// Reading takes two round trips: the root's properties, then the properties of the window manager's check
// window. Requests and parsing are functions of their own, for callers that cannot wait in between.

struct EwmhRootRequest {
    xcb_get_property_cookie_t check, count, current, supported;
};
struct EwmhRootReplies {
    Reply<xcb_get_property_reply_t> check, count, current, supported;
};
[[nodiscard]] EwmhRootRequest requestRoot(const XConnection& connection, const Atoms& atoms);

struct EwmhRoot {
    enum class State {
        Absent,        // no window manager, or one without desktops or with nonsense
        Inconsistent,  // left behind by a window manager that has died or is being replaced
        Unanswered,    // the server has not told in time
        Plausible,     // `desktops` holds, if the check window does
    };
    State state = State::Absent;
    xcb_window_t checkWindow = XCB_WINDOW_NONE;
    EwmhDesktops desktops;
};
[[nodiscard]] EwmhRoot parseRoot(const Atoms& atoms, const EwmhRootReplies& replies);

struct EwmhCheckRequest {
    xcb_get_property_cookie_t check, name;
};
struct EwmhCheckReplies {
    Reply<xcb_get_property_reply_t> check, name;
};
[[nodiscard]] EwmhCheckRequest requestCheckWindow(const XConnection& connection, const Atoms& atoms,
                                                  xcb_window_t checkWindow);
// The window manager's name; absent when the check window does not name itself, as a dead one cannot.
[[nodiscard]] std::optional<std::string> parseCheckWindow(xcb_window_t checkWindow,
                                                          const EwmhCheckReplies& replies);

// Reads the root's properties, waiting, and leaves the check window alone.
[[nodiscard]] EwmhRoot readRootProperties(XConnection& connection, const Atoms& atoms);
// Reads the check window of a plausible root, waiting, and takes its word: the window manager's name, or that
// it is not alive.
void readCheckWindow(XConnection& connection, const Atoms& atoms, EwmhRoot& root);
// Reads both, waiting. The state is Plausible only for a window manager that is alive.
[[nodiscard]] EwmhRoot readRoot(XConnection& connection, const Atoms& atoms);

// The managed ids of the Spaces that a window of this desktop number is on, of `count` desktops; empty for a
// window that has none.
[[nodiscard]] std::vector<ManagedSpaceId> managedSpaceIds(std::optional<std::uint32_t> desktop,
                                                          std::uint32_t count);

// Asks the window manager to show a desktop (EWMH _NET_CURRENT_DESKTOP). `time` is a server time stamp.
void sendCurrentDesktop(const XConnection& connection, const Atoms& atoms, std::uint32_t desktop,
                        xcb_timestamp_t time);

// Has the server tell its time in an event about a window of our own, which is returned.
[[nodiscard]] xcb_window_t requestServerTime(const XConnection& connection);
// Waits for the time told for that window, and destroys it; XCB_CURRENT_TIME when it has not come by `end`.
// Drops the events that come first.
[[nodiscard]] xcb_timestamp_t awaitServerTime(XConnection& connection, xcb_window_t window, Instant end);

}  // namespace platform::x11
