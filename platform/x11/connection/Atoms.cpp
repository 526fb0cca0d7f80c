#include "platform/x11/connection/Atoms.h"

#include <algorithm>
#include <string_view>

namespace platform::x11 {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Atom::Count)> kNames = {
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_NUMBER_OF_DESKTOPS",
    "_NET_CURRENT_DESKTOP",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_WM_NAME",
    "_NET_WM_DESKTOP",
    "_NET_WM_PID",
    "_NET_FRAME_EXTENTS",
    "_NET_WM_WINDOW_OPACITY",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DND",
};

}  // namespace

std::span<const std::string_view> Atoms::names() {
    return kNames;
}

Atoms Atoms::intern(XConnection& connection) {
    Atoms atoms;
    std::ranges::copy(connection.intern(kNames), atoms.values_.begin());
    return atoms;
}

Atoms Atoms::numbered() {
    Atoms atoms;
    xcb_atom_t next = 1000;
    for (auto& value : atoms.values_) value = next++;
    return atoms;
}

}  // namespace platform::x11
