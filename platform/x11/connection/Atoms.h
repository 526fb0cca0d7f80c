#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstddef>

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// The names that this layer uses, of EWMH, ICCCM, XEmbed, RandR, Motif and KDE: NetWmName is _NET_WM_NAME.
enum class Atom : std::size_t {
    // Asked for by commands, too.
    NetSupported,
    NetSupportingWmCheck,
    NetNumberOfDesktops,
    NetCurrentDesktop,
    NetClientList,
    NetClientListStacking,
    NetWmName,
    NetWmDesktop,
    NetWmPid,
    NetFrameExtents,
    NetWmWindowOpacity,
    NetWmState,
    NetWmStateAbove,
    NetWmWindowType,
    NetWmWindowTypeDesktop,
    NetWmWindowTypeDock,
    NetWmWindowTypeNotification,
    NetWmWindowTypeTooltip,
    NetWmWindowTypeMenu,
    NetWmWindowTypePopupMenu,
    NetWmWindowTypeDropdownMenu,
    NetWmWindowTypeCombo,
    NetWmWindowTypeDnd,
    // Asked for by the application alone.
    NetActiveWindow,
    NetDesktopNames,
    NetRestackWindow,
    NetWorkarea,
    NetWmPing,
    NetWmStateBelow,
    NetWmStateFullscreen,
    NetWmStateHidden,
    NetWmStateSkipPager,
    NetWmStateSkipTaskbar,
    NetWmStrut,
    NetWmStrutPartial,
    NetWmUserTime,
    KdeNetWmStateSkipSwitcher,
    KdeNetWmWindowTypeCriticalNotification,
    MotifWmHints,
    NetSystemTrayOpcode,
    NetSystemTrayVisual,
    XembedInfo,
    Edid,
    Utf8String,
    WmDeleteWindow,
    WmProtocols,
    WmState,
    // The selections of the screen's managers (ICCCM 2.8): its system tray and its compositor.
    NetSystemTraySelection,
    NetWmCmSelection,
    Count
};

// The atoms of these names, the same for every connection to a server; 0 for those that could not be had.
class Atoms {
  public:
    // All, in one round trip.
    [[nodiscard]] static Atoms intern(XConnection& connection);
    // The atoms that commands ask for, in one round trip that the others, which are 0, would make longer.
    [[nodiscard]] static Atoms internForCommand(XConnection& connection);
    [[nodiscard]] xcb_atom_t operator[](Atom atom) const { return values_[static_cast<std::size_t>(atom)]; }

    // For tests of parsers: every atom has its own number above those that X predefines.
    [[nodiscard]] static Atoms numbered();

  private:
    [[nodiscard]] static Atoms internUpTo(XConnection& connection, Atom last);

    std::array<xcb_atom_t, static_cast<std::size_t>(Atom::Count)> values_{};
};

}  // namespace platform::x11
