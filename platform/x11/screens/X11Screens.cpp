#include "platform/x11/screens/X11Screens.h"

#include <xcb/randr.h>

#include <array>

#include "platform/x11/connection/Extensions.h"
#include "platform/x11/connection/NameUuid.h"
#include "platform/x11/screens/WorkArea.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

namespace {

constexpr auto kCoalescingDelay = std::chrono::milliseconds(20);
constexpr auto kLongestPause = std::chrono::seconds(1);
constexpr std::uint32_t kLongestEdid = 64;  // 32-bit units
constexpr const char* kNamespace = "4f1d2c66-0b7e-4a90-9c51-3e88d2076a14";

struct OutputRequest {
    xcb_randr_get_output_info_cookie_t info;
    xcb_randr_get_output_property_cookie_t edid;
};

// Made from the output's name and its monitor's EDID.
std::optional<std::string> outputUuid(const xcb_randr_get_output_info_reply_t* info,
                                      const xcb_randr_get_output_property_reply_t* edid) {
    if (!info) return std::nullopt;
    std::string identity(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info)),
                         static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info)));
    if (edid && edid->format == 8)
        identity.append(reinterpret_cast<const char*>(xcb_randr_get_output_property_data(edid)),
                        edid->num_items);
    return nameUuid(kNamespace, identity);
}

}  // namespace

struct X11Screens::Monitor {
    DisplayId id;
    bool primary = false;
    PixelRect frame;
    PixelRect visible = frame;
    std::optional<xcb_randr_output_t> output = std::nullopt;
    std::optional<std::string> uuid = std::nullopt;
};

// The root window's size, windows and work area.
struct X11Screens::Desktop {
    PixelRect root;
    std::vector<xcb_window_t> clients;
    std::optional<PixelRect> workArea;
};

X11Screens::X11Screens(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                       double scale)
    : connection_(connection),
      atoms_(atoms),
      runLoop_(runLoop),
      scale_(scale),
      backoff_(kCoalescingDelay, kLongestPause) {
    selectEvents(events);
    if (!read()) readLater(backoff_.next());
}

void X11Screens::selectEvents(XEvents& events) {
    events.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscription_ = events.subscribe([this](const auto& event) { handle(event); });
    const auto* extension = findExtension(connection_, xcb_randr_id);
    if (!extension) return;
    randrEvents_ = extension->first_event;
    // The server sends only the events of the version that the client has named.
    const auto cookie = xcb_randr_query_version(connection_.get(), 1, 5);
    const auto version = connection_.reply<xcb_randr_query_version_reply_t>(cookie);
    const auto isAtLeast = [&version](std::uint32_t minor) {
        return version && (version->major_version > 1 || version->minor_version >= minor);
    };
    hasMonitors_ = isAtLeast(5);
    const auto outputs = XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE;
    xcb_randr_select_input(
        connection_.get(), connection_.root(),
        static_cast<std::uint16_t>(XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | (isAtLeast(2) ? outputs : 0)));
}

std::optional<Screen> X11Screens::mainScreen() const {
    return screens_.empty() ? std::nullopt : std::optional(screens_.front());
}

DisplayId X11Screens::mainDisplayId() const {
    return screens_.empty() ? DisplayId{} : screens_.front().displayId.value_or(DisplayId{});
}

std::optional<std::string> X11Screens::displayUuid(DisplayId display) const {
    const auto found = uuids_.find(display);
    return found == uuids_.end() ? std::nullopt : std::optional(found->second);
}

Subscription X11Screens::onParametersChanged(std::function<void()> action) {
    return changed_.subscribe(std::move(action));
}

Point X11Screens::pointerLocation() const {
    const auto cookie = xcb_query_pointer(connection_.get(), connection_.root());
    if (const auto reply = connection_.reply<xcb_query_pointer_reply_t>(cookie))
        lastLocation_ = coordinates_.pointerAt(reply->root_x, reply->root_y);
    return lastLocation_;
}

void X11Screens::handle(const xcb_generic_event_t& event) {
    const auto type = XEvents::type(event);
    bool changes = false;
    if (randrEvents_ != 0 && (type == randrEvents_ || type == randrEvents_ + XCB_RANDR_NOTIFY)) {
        changes = true;
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        changes = configure.window == connection_.root();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        changes = property.window == connection_.root() &&
                  (property.atom == atoms_[Atom::NetWorkarea] ||
                   (property.atom == atoms_[Atom::NetCurrentDesktop] && workAreasDiffer_));
    }
    if (changes && !readTimer_.isActive()) readLater(kCoalescingDelay);
}

void X11Screens::readLater(Duration delay) {
    readTimer_ = runLoop_.after(delay, [this] {
        readTimer_ = {};
        readAndTell();
    });
}

void X11Screens::readAndTell() {
    const auto screens = screens_;
    const auto uuids = uuids_;
    const auto coordinates = coordinates_;
    if (!read()) return readLater(backoff_.next());
    backoff_.reset();
    if (screens_ != screens || uuids_ != uuids || coordinates_ != coordinates) changed_.notify();
}

// False, with nothing changed, when the server has not told all of it in time.
bool X11Screens::read() {
    const auto desktop = readDesktop();
    auto monitors = readMonitors(desktop.root);
    std::stable_partition(monitors.begin(), monitors.end(),
                          [](const Monitor& monitor) { return monitor.primary; });
    nameMonitors(monitors);
    cutOutPanels(monitors, desktop);
    if (connection_.isLate() || connection_.isBroken()) return false;
    setScreens(monitors);
    return true;
}

void X11Screens::setScreens(const std::vector<Monitor>& monitors) {
    if (!monitors.empty()) coordinates_ = CoordinateSpace(monitors.front().frame, scale_);
    screens_.clear();
    uuids_.clear();
    for (const auto& monitor : monitors) {
        screens_.push_back({monitor.id, coordinates_.toPoints(monitor.frame),
                            coordinates_.toPoints(monitor.visible), scale_});
        if (monitor.uuid) uuids_.emplace(monitor.id, *monitor.uuid);
    }
}

X11Screens::Desktop X11Screens::readDesktop() {
    const auto ask = [&](xcb_atom_t property, xcb_atom_t type, std::uint32_t longs) {
        return requestProperty(connection_, connection_.root(), property, type, longs);
    };
    const auto get = [&](auto cookie) { return connection_.reply<xcb_get_property_reply_t>(cookie); };
    const auto rootCookie = xcb_get_geometry(connection_.get(), connection_.root());
    const auto clientsCookie = ask(atoms_[Atom::NetClientList], XCB_ATOM_WINDOW, kMostClients);
    const auto areasCookie = ask(atoms_[Atom::NetWorkarea], XCB_ATOM_CARDINAL, 4 * kMostDesktops);
    const auto currentCookie = ask(atoms_[Atom::NetCurrentDesktop], XCB_ATOM_CARDINAL, 1);

    Desktop desktop;
    if (const auto root = connection_.reply<xcb_get_geometry_reply_t>(rootCookie))
        desktop.root = {0, 0, root->width, root->height};
    const auto clients = get(clientsCookie);
    const auto windows = values32(clients.get(), XCB_ATOM_WINDOW);
    desktop.clients.assign(windows.begin(), windows.end());
    const auto areas = get(areasCookie);
    const auto values = values32(areas.get(), XCB_ATOM_CARDINAL);
    const auto current = value32(get(currentCookie).get(), XCB_ATOM_CARDINAL).value_or(0);
    desktop.workArea = workAreaOf(values, current);
    workAreasDiffer_ = workAreasDiffer(values);
    return desktop;
}

std::vector<X11Screens::Monitor> X11Screens::readMonitors(const PixelRect& root) {
    if (!hasMonitors_) return {{.id = {1}, .primary = true, .frame = root}};
    const auto cookie = xcb_randr_get_monitors(connection_.get(), connection_.root(), 1);
    const auto reply = connection_.reply<xcb_randr_get_monitors_reply_t>(cookie);
    if (!reply) return {};
    std::vector<Monitor> monitors;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
         xcb_randr_monitor_info_next(&it)) {
        Monitor monitor{.id = {it.data->name},
                        .primary = it.data->primary != 0,
                        .frame = {it.data->x, it.data->y, it.data->width, it.data->height}};
        if (xcb_randr_monitor_info_outputs_length(it.data) > 0) {
            monitor.output = xcb_randr_monitor_info_outputs(it.data)[0];
            monitor.id = {*monitor.output};
        }
        if (monitor.frame.width > 0 && monitor.frame.height > 0) monitors.push_back(std::move(monitor));
    }
    return monitors;
}

void X11Screens::nameMonitors(std::vector<Monitor>& monitors) {
    auto* xcb = connection_.get();
    std::vector<std::pair<Monitor*, OutputRequest>> requests;
    for (auto& monitor : monitors)
        if (monitor.output)
            requests.push_back({&monitor,
                                {xcb_randr_get_output_info(xcb, *monitor.output, XCB_CURRENT_TIME),
                                 xcb_randr_get_output_property(xcb, *monitor.output, atoms_[Atom::Edid],
                                                               XCB_ATOM_ANY, 0, kLongestEdid, 0, 0)}});
    for (const auto& [monitor, request] : requests) {
        const auto info = connection_.reply<xcb_randr_get_output_info_reply_t>(request.info);
        const auto edid = connection_.reply<xcb_randr_get_output_property_reply_t>(request.edid);
        monitor->uuid = outputUuid(info.get(), edid.get());
    }
}

// The panels' own struts tell which monitor they are on; the window manager's work area, one for all
// monitors, counts where they tell nothing.
void X11Screens::cutOutPanels(std::vector<Monitor>& monitors, const Desktop& desktop) {
    std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> cookies;
    for (const auto window : desktop.clients)
        cookies.emplace_back(
            requestProperty(connection_, window, atoms_[Atom::NetWmStrutPartial], XCB_ATOM_CARDINAL, 12),
            requestProperty(connection_, window, atoms_[Atom::NetWmStrut], XCB_ATOM_CARDINAL, 4));
    for (const auto& [partialCookie, plainCookie] : cookies) {
        const auto partial = connection_.reply<xcb_get_property_reply_t>(partialCookie);
        const auto plain = connection_.reply<xcb_get_property_reply_t>(plainCookie);
        const auto strut =
            strutOf(values32(partial.get(), XCB_ATOM_CARDINAL), values32(plain.get(), XCB_ATOM_CARDINAL));
        if (!strut) continue;
        for (auto& monitor : monitors)
            monitor.visible = without(*strut, monitor.visible, monitor.frame, desktop.root);
    }
    if (!desktop.workArea) return;
    for (auto& monitor : monitors)
        if (monitor.visible == monitor.frame) monitor.visible = within(*desktop.workArea, monitor.frame);
}

}  // namespace platform::x11
