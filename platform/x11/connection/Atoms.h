#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

enum class Atom : std::size_t {
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
    Count
};

// The atoms of the names above, asked for in one round trip; 0 for those that could not be had.
class Atoms {
  public:
    [[nodiscard]] static std::span<const std::string_view> names();
    [[nodiscard]] static Atoms intern(XConnection& connection);
    [[nodiscard]] xcb_atom_t operator[](Atom atom) const { return values_[static_cast<std::size_t>(atom)]; }

    // For tests of parsers: every atom has its own number above those that X predefines.
    [[nodiscard]] static Atoms numbered();

  private:
    std::array<xcb_atom_t, static_cast<std::size_t>(Atom::Count)> values_{};
};

}  // namespace platform::x11
