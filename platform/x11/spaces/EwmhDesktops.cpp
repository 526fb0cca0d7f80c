#include "platform/x11/spaces/EwmhDesktops.h"

#include <algorithm>
#include <array>

#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

namespace {

constexpr std::uint32_t kMostSupportedAtoms = 4096;
constexpr std::uint32_t kLongestName = 64;  // 32-bit units

std::optional<std::uint32_t> below(std::optional<std::uint32_t> value, std::uint32_t limit) {
    return value && *value < limit ? value : std::nullopt;
}

}  // namespace

EwmhRootRequest requestRoot(const XConnection& connection, const Atoms& atoms) {
    const auto ask = [&](Atom property, xcb_atom_t type, std::uint32_t longs) {
        return requestProperty(connection, connection.root(), atoms[property], type, longs);
    };
    return {ask(Atom::NetSupportingWmCheck, XCB_ATOM_WINDOW, 1),
            ask(Atom::NetNumberOfDesktops, XCB_ATOM_CARDINAL, 1),
            ask(Atom::NetCurrentDesktop, XCB_ATOM_CARDINAL, 1),
            ask(Atom::NetSupported, XCB_ATOM_ATOM, kMostSupportedAtoms)};
}

EwmhRoot parseRoot(const Atoms& atoms, const EwmhRootReplies& replies) {
    EwmhRoot root;
    const auto check = value32(replies.check.get(), XCB_ATOM_WINDOW);
    const auto count = value32(replies.count.get(), XCB_ATOM_CARDINAL);
    const auto supported = values32(replies.supported.get(), XCB_ATOM_ATOM);
    const auto supports = [&](Atom atom) {
        return std::ranges::find(supported, atoms[atom]) != supported.end();
    };
    root.checkWindow = check.value_or(XCB_WINDOW_NONE);
    const bool hasNoDesktops = check && !supported.empty() && !supports(Atom::NetNumberOfDesktops);
    if (check.has_value() != count.has_value() && !hasNoDesktops) root.state = EwmhRoot::State::Inconsistent;
    if (root.checkWindow == XCB_WINDOW_NONE || !count || *count < 1 || *count > kMostDesktops) return root;

    root.state = EwmhRoot::State::Plausible;
    root.desktops.count = *count;
    root.desktops.current = below(value32(replies.current.get(), XCB_ATOM_CARDINAL), *count);
    root.desktops.canSwitch = supports(Atom::NetCurrentDesktop);
    return root;
}

EwmhCheckRequest requestCheckWindow(const XConnection& connection, const Atoms& atoms,
                                    xcb_window_t checkWindow) {
    return {requestProperty(connection, checkWindow, atoms[Atom::NetSupportingWmCheck], XCB_ATOM_WINDOW, 1),
            requestProperty(connection, checkWindow, atoms[Atom::NetWmName], XCB_GET_PROPERTY_TYPE_ANY,
                            kLongestName)};
}

std::optional<std::string> parseCheckWindow(xcb_window_t checkWindow, const EwmhCheckReplies& replies) {
    if (value32(replies.check.get(), XCB_ATOM_WINDOW) != checkWindow) return std::nullopt;
    return std::string(text8(replies.name.get()));
}

EwmhRoot readRootProperties(XConnection& connection, const Atoms& atoms) {
    const auto request = requestRoot(connection, atoms);
    auto root = parseRoot(atoms, {connection.reply(request.check), connection.reply(request.count),
                                  connection.reply(request.current), connection.reply(request.supported)});
    if (connection.isLate()) root.state = EwmhRoot::State::Unanswered;
    return root;
}

void readCheckWindow(XConnection& connection, const Atoms& atoms, EwmhRoot& root) {
    const auto request = requestCheckWindow(connection, atoms, root.checkWindow);
    auto name =
        parseCheckWindow(root.checkWindow, {connection.reply(request.check), connection.reply(request.name)});
    if (connection.isLate()) {
        root.state = EwmhRoot::State::Unanswered;
    } else if (!name) {
        root.state = EwmhRoot::State::Inconsistent;
    } else {
        root.desktops.windowManager = std::move(*name);
    }
}

EwmhRoot readRoot(XConnection& connection, const Atoms& atoms) {
    auto root = readRootProperties(connection, atoms);
    if (root.state == EwmhRoot::State::Plausible) readCheckWindow(connection, atoms, root);
    return root;
}

std::vector<ManagedSpaceId> managedSpaceIds(std::optional<std::uint32_t> desktop, std::uint32_t count) {
    if (!desktop) return {};
    if (*desktop != kEveryDesktop) return {ManagedSpaceId{std::uint64_t{*desktop} + 1}};
    std::vector<ManagedSpaceId> every;
    every.reserve(count);
    for (std::uint64_t id = 1; id <= count; ++id) every.push_back({id});
    return every;
}

void sendCurrentDesktop(const XConnection& connection, const Atoms& atoms, std::uint32_t desktop,
                        xcb_timestamp_t time) {
    const std::array<std::uint32_t, 2> data = {desktop, time};
    sendRootMessage(connection, connection.root(), atoms[Atom::NetCurrentDesktop], data);
    xcb_flush(connection.get());
}

xcb_window_t requestServerTime(const XConnection& connection) {
    auto* xcb = connection.get();
    const auto window = xcb_generate_id(xcb);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, 0, window, connection.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(xcb, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    return window;
}

xcb_timestamp_t awaitServerTime(XConnection& connection, xcb_window_t window, Instant end) {
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    while (const auto event = connection.nextEvent(end)) {
        if (XEvents::type(*event) != XCB_PROPERTY_NOTIFY) continue;
        const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        if (change->window != window) continue;
        time = change->time;
        break;
    }
    xcb_destroy_window(connection.get(), window);
    return time;
}

}  // namespace platform::x11
