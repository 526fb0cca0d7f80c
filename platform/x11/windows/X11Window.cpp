#include "platform/x11/windows/X11Window.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::x11 {

namespace {

constexpr std::uint32_t kLongestList = 32;    // 32-bit units
constexpr std::uint32_t kLongestClass = 256;  // 32-bit units
constexpr std::uint32_t kLargestExtent = 0x7FFF;

// Layers in the order of the desktop that this program's words come from: its numbers for floating windows,
// the Dock, status windows and pop-up menus.
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

// Whether the text is well-formed UTF-8, as far as its lead and continuation bytes tell.
bool looksLikeUtf8(std::string_view text) {
    std::size_t expected = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xC0) == 0x80;
        if (continues != (expected > 0)) return false;
        if (continues) {
            --expected;
        } else if (byte >= 0x80) {
            if (byte < 0xC2 || byte > 0xF4) return false;
            expected = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
        }
    }
    return expected == 0;
}

std::string fromLatin1(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | (byte >> 6));
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
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

std::optional<std::string> classPart(std::string_view property) {
    const auto end = property.find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    auto name = property.substr(end + 1);
    name = name.substr(0, name.find('\0'));
    if (name.empty()) return std::nullopt;
    return looksLikeUtf8(name) ? std::string(name) : fromLatin1(name);
}

}  // namespace platform::x11
