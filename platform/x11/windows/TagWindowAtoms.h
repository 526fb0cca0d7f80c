#pragma once

#include <array>

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// The atoms that tag windows speak to window managers with (EWMH and ICCCM names, and KDE's skip-switcher
// state and type of notifications in front of all else).
struct TagWindowAtoms {
    xcb_atom_t windowType, notification, state, above, below, skipTaskbar, skipPager, skipSwitcher, desktop,
        name, utf8String, pid, userTime, motifHints, opacity, protocols, deleteWindow, ping, restack, wmState,
        desktopType, criticalNotification;

    static constexpr std::array<std::string_view, 22> kNames = {
        "_NET_WM_WINDOW_TYPE",
        "_NET_WM_WINDOW_TYPE_NOTIFICATION",
        "_NET_WM_STATE",
        "_NET_WM_STATE_ABOVE",
        "_NET_WM_STATE_BELOW",
        "_NET_WM_STATE_SKIP_TASKBAR",
        "_NET_WM_STATE_SKIP_PAGER",
        "_KDE_NET_WM_STATE_SKIP_SWITCHER",
        "_NET_WM_DESKTOP",
        "_NET_WM_NAME",
        "UTF8_STRING",
        "_NET_WM_PID",
        "_NET_WM_USER_TIME",
        "_MOTIF_WM_HINTS",
        "_NET_WM_WINDOW_OPACITY",
        "WM_PROTOCOLS",
        "WM_DELETE_WINDOW",
        "_NET_WM_PING",
        "_NET_RESTACK_WINDOW",
        "WM_STATE",
        "_NET_WM_WINDOW_TYPE_DESKTOP",
        "_KDE_NET_WM_WINDOW_TYPE_CRITICAL_NOTIFICATION"};

    [[nodiscard]] static TagWindowAtoms intern(XConnection& connection) {
        const auto a = connection.intern(kNames);
        return {a[0],  a[1],  a[2],  a[3],  a[4],  a[5],  a[6],  a[7],  a[8],  a[9],  a[10],
                a[11], a[12], a[13], a[14], a[15], a[16], a[17], a[18], a[19], a[20], a[21]};
    }
};

}  // namespace platform::x11
