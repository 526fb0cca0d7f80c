#include "platform/x11/connection/Atoms.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::x11 {

namespace {

constexpr auto kAll = static_cast<std::size_t>(Atom::Count);
constexpr auto kLastOfCommand = Atom::NetWmWindowTypeDnd;

constexpr std::array<std::pair<Atom, std::string_view>, kAll> kNames = {{
    {Atom::NetSupported, "_NET_SUPPORTED"},
    {Atom::NetSupportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
    {Atom::NetNumberOfDesktops, "_NET_NUMBER_OF_DESKTOPS"},
    {Atom::NetCurrentDesktop, "_NET_CURRENT_DESKTOP"},
    {Atom::NetClientList, "_NET_CLIENT_LIST"},
    {Atom::NetClientListStacking, "_NET_CLIENT_LIST_STACKING"},
    {Atom::NetWmName, "_NET_WM_NAME"},
    {Atom::NetWmDesktop, "_NET_WM_DESKTOP"},
    {Atom::NetWmPid, "_NET_WM_PID"},
    {Atom::NetFrameExtents, "_NET_FRAME_EXTENTS"},
    {Atom::NetWmWindowOpacity, "_NET_WM_WINDOW_OPACITY"},
    {Atom::NetWmState, "_NET_WM_STATE"},
    {Atom::NetWmStateAbove, "_NET_WM_STATE_ABOVE"},
    {Atom::NetWmWindowType, "_NET_WM_WINDOW_TYPE"},
    {Atom::NetWmWindowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
    {Atom::NetWmWindowTypeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    {Atom::NetWmWindowTypeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
    {Atom::NetWmWindowTypeTooltip, "_NET_WM_WINDOW_TYPE_TOOLTIP"},
    {Atom::NetWmWindowTypeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
    {Atom::NetWmWindowTypePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
    {Atom::NetWmWindowTypeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
    {Atom::NetWmWindowTypeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
    {Atom::NetWmWindowTypeDnd, "_NET_WM_WINDOW_TYPE_DND"},
    {Atom::NetActiveWindow, "_NET_ACTIVE_WINDOW"},
    {Atom::NetDesktopNames, "_NET_DESKTOP_NAMES"},
    {Atom::NetRestackWindow, "_NET_RESTACK_WINDOW"},
    {Atom::NetWorkarea, "_NET_WORKAREA"},
    {Atom::NetWmPing, "_NET_WM_PING"},
    {Atom::NetWmStateBelow, "_NET_WM_STATE_BELOW"},
    {Atom::NetWmStateFullscreen, "_NET_WM_STATE_FULLSCREEN"},
    {Atom::NetWmStateHidden, "_NET_WM_STATE_HIDDEN"},
    {Atom::NetWmStateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
    {Atom::NetWmStateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
    {Atom::NetWmStrut, "_NET_WM_STRUT"},
    {Atom::NetWmStrutPartial, "_NET_WM_STRUT_PARTIAL"},
    {Atom::NetWmUserTime, "_NET_WM_USER_TIME"},
    {Atom::KdeNetWmStateSkipSwitcher, "_KDE_NET_WM_STATE_SKIP_SWITCHER"},
    {Atom::KdeNetWmWindowTypeCriticalNotification, "_KDE_NET_WM_WINDOW_TYPE_CRITICAL_NOTIFICATION"},
    {Atom::MotifWmHints, "_MOTIF_WM_HINTS"},
    {Atom::NetSystemTrayOpcode, "_NET_SYSTEM_TRAY_OPCODE"},
    {Atom::NetSystemTrayVisual, "_NET_SYSTEM_TRAY_VISUAL"},
    {Atom::XembedInfo, "_XEMBED_INFO"},
    {Atom::Edid, "EDID"},
    {Atom::Utf8String, "UTF8_STRING"},
    {Atom::WmDeleteWindow, "WM_DELETE_WINDOW"},
    {Atom::WmProtocols, "WM_PROTOCOLS"},
    {Atom::WmState, "WM_STATE"},
    {Atom::NetSystemTraySelection, "_NET_SYSTEM_TRAY_S"},
    {Atom::NetWmCmSelection, "_NET_WM_CM_S"},
}};

constexpr bool isComplete() {
    for (std::size_t i = 0; i < kAll; ++i)
        if (kNames[i].first != static_cast<Atom>(i)) return false;
    return true;
}
static_assert(isComplete(), "every atom has its name, in the order of the atoms");

// The names of selections end with the number of their screen.
std::string nameOf(Atom atom, const XConnection& connection) {
    std::string name(kNames[static_cast<std::size_t>(atom)].second);
    if (atom == Atom::NetSystemTraySelection || atom == Atom::NetWmCmSelection)
        name += std::to_string(connection.screenNumber());
    return name;
}

}  // namespace

Atoms Atoms::internUpTo(XConnection& connection, Atom last) {
    const auto count = static_cast<std::size_t>(last) + 1;
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto name = nameOf(static_cast<Atom>(i), connection);
        cookies.push_back(
            xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    }
    Atoms atoms;
    for (std::size_t i = 0; i < count; ++i)
        if (const auto reply = connection.reply<xcb_intern_atom_reply_t>(cookies[i]))
            atoms.values_[i] = reply->atom;
    return atoms;
}

Atoms Atoms::intern(XConnection& connection) {
    return internUpTo(connection, static_cast<Atom>(kAll - 1));
}

Atoms Atoms::internForCommand(XConnection& connection) {
    return internUpTo(connection, kLastOfCommand);
}

Atoms Atoms::numbered() {
    Atoms atoms;
    xcb_atom_t next = 1000;
    for (auto& value : atoms.values_) value = next++;
    return atoms;
}

}  // namespace platform::x11
