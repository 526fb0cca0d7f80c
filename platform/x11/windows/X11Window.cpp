#include "platform/x11/windows/X11Window.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/x11/windows/WindowClass.h"

namespace platform::x11 {

namespace {

constexpr std::uint32_t kLongestList = 32;    // 32-bit units
constexpr std::uint32_t kLongestClass = 256;  // 32-bit units
constexpr std::uint32_t kLargestExtent = 0x7FFF;

// Window layers as the application's vocabulary numbers them: floating windows, the Dock, status windows and
// pop-up menus.
constexpr std::int64_t kNormalLayer = 0;
constexpr std::int64_t kFloatingLayer = 3;
constexpr std::int64_t kDockLayer = 20;
constexpr std::int64_t kStatusLayer = 25;
constexpr std::int64_t kMenuLayer = 101;

constexpr std::array<std::pair<Atom, std::int64_t>, 8> kTypeLayers = {{
    {Atom::NetWmWindowTypeDock, kDockLayer},
    {Atom::NetWmWindowTypeNotification, kStatusLayer},
    {Atom::NetWmWindowTypeTooltip, kMenuLayer},
    {Atom::NetWmWindowTypeMenu, kMenuLayer},
    {Atom::NetWmWindowTypePopupMenu, kMenuLayer},
    {Atom::NetWmWindowTypeDropdownMenu, kMenuLayer},
    {Atom::NetWmWindowTypeCombo, kMenuLayer},
    {Atom::NetWmWindowTypeDnd, kMenuLayer},
}};

bool holds(std::span<const std::uint32_t> values, xcb_atom_t atom) {
    return std::ranges::find(values, atom) != values.end();
}

std::int64_t layerOf(const Atoms& atoms, const X11WindowReplies& replies) {
    const auto types = values32(replies.types.get(), XCB_ATOM_ATOM);
    for (const auto& [type, layer] : kTypeLayers)
        if (holds(types, atoms[type])) return layer;
    const bool above = holds(values32(replies.states.get(), XCB_ATOM_ATOM), atoms[Atom::NetWmStateAbove]);
    return above ? kFloatingLayer : kNormalLayer;
}

Rect boundsOf(const X11WindowReplies& replies, Point origin) {
    // The frame's widths at the left, right, top and bottom.
    std::array<double, 4> frame{};
    const auto extents = values32(replies.frameExtents.get(), XCB_ATOM_CARDINAL);
    if (extents.size() == frame.size())
        std::ranges::transform(extents, frame.begin(), [](auto v) { return std::min(v, kLargestExtent); });
    const auto& geometry = *replies.geometry;
    const double border = geometry.border_width;
    return {replies.position->dst_x - border - frame[0] - origin.x,
            replies.position->dst_y - border - frame[2] - origin.y,
            geometry.width + 2 * border + frame[0] + frame[1],
            geometry.height + 2 * border + frame[2] + frame[3]};
}

}  // namespace

X11WindowRequest requestWindow(const XConnection& connection, const Atoms& atoms, xcb_window_t window) {
    const auto ask = [&](xcb_atom_t property, xcb_atom_t type, std::uint32_t longs) {
        return requestProperty(connection, window, property, type, longs);
    };
    return {xcb_get_geometry(connection.get(), window),
            xcb_translate_coordinates(connection.get(), window, connection.root(), 0, 0),
            ask(atoms[Atom::NetFrameExtents], XCB_ATOM_CARDINAL, 4),
            ask(atoms[Atom::NetWmDesktop], XCB_ATOM_CARDINAL, 1),
            ask(atoms[Atom::NetWmWindowType], XCB_ATOM_ATOM, kLongestList),
            ask(atoms[Atom::NetWmState], XCB_ATOM_ATOM, kLongestList),
            ask(XCB_ATOM_WM_CLASS, XCB_GET_PROPERTY_TYPE_ANY, kLongestClass),
            ask(atoms[Atom::NetWmPid], XCB_ATOM_CARDINAL, 1),
            ask(atoms[Atom::NetWmWindowOpacity], XCB_ATOM_CARDINAL, 1)};
}

std::optional<X11Window> parseWindow(const Atoms& atoms, xcb_window_t window, const X11WindowReplies& replies,
                                     Point origin) {
    if (!replies.geometry || !replies.position) return std::nullopt;
    X11Window result;
    const auto types = values32(replies.types.get(), XCB_ATOM_ATOM);
    result.isDesktopElement = holds(types, atoms[Atom::NetWmWindowTypeDesktop]);
    result.desktop = value32(replies.desktop.get(), XCB_ATOM_CARDINAL);
    result.info.layer = layerOf(atoms, replies);
    result.info.number = window;
    result.info.ownerPid = value32(replies.pid.get(), XCB_ATOM_CARDINAL);
    result.info.ownerName = classPart(text8(replies.windowClass.get()));
    result.info.bounds = boundsOf(replies, origin);
    if (const auto opacity = value32(replies.opacity.get(), XCB_ATOM_CARDINAL))
        result.info.alpha = *opacity / static_cast<double>(0xFFFFFFFF);
    return result;
}

}  // namespace platform::x11
