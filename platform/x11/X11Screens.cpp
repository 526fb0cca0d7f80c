#include "platform/x11/X11Screens.h"

#include <uuid/uuid.h>
#include <xcb/randr.h>

#include <array>

namespace platform::x11 {

namespace {

constexpr auto kCoalesce = std::chrono::milliseconds(20);
constexpr auto kRetry = std::chrono::milliseconds(200);
constexpr std::uint32_t kMostClients = 4096;

// The edges of the root window that a panel keeps for itself, with the stretch of each edge (EWMH
// _NET_WM_STRUT_PARTIAL).
struct Strut {
    std::array<std::uint32_t, 12> values{};  // left, right, top, bottom, then start and end along each
};

bool overlap(std::int64_t startA, std::int64_t endA, std::int64_t startB, std::int64_t endB) {
    return startA <= endB && startB <= endA;
}

// What is left of `area`, a part of the monitor `monitor`, beside the panel.
PixelRect without(const Strut& strut, PixelRect area, const PixelRect& monitor, const PixelRect& root) {
    const auto& v = strut.values;
    const std::int64_t right = monitor.x + monitor.width;
    const std::int64_t bottom = monitor.y + monitor.height;
    const bool sharesRows = overlap(v[4], v[5], monitor.y, bottom - 1);
    const bool sharesRowsRight = overlap(v[6], v[7], monitor.y, bottom - 1);
    const bool sharesColumns = overlap(v[8], v[9], monitor.x, right - 1);
    const bool sharesColumnsBottom = overlap(v[10], v[11], monitor.x, right - 1);
    std::int64_t minX = area.x, minY = area.y, maxX = area.x + area.width, maxY = area.y + area.height;
    if (v[0] > 0 && sharesRows && v[0] < right) minX = std::max<std::int64_t>(minX, v[0]);
    if (v[1] > 0 && sharesRowsRight && root.width - std::int64_t{v[1]} > monitor.x)
        maxX = std::min<std::int64_t>(maxX, root.width - std::int64_t{v[1]});
    if (v[2] > 0 && sharesColumns && v[2] < bottom) minY = std::max<std::int64_t>(minY, v[2]);
    if (v[3] > 0 && sharesColumnsBottom && root.height - std::int64_t{v[3]} > monitor.y)
        maxY = std::min<std::int64_t>(maxY, root.height - std::int64_t{v[3]});
    if (maxX <= minX || maxY <= minY) return area;
    return {static_cast<std::int32_t>(minX), static_cast<std::int32_t>(minY),
            static_cast<std::int32_t>(maxX - minX), static_cast<std::int32_t>(maxY - minY)};
}

std::optional<Strut> strutOf(const xcb_get_property_reply_t* partial, const xcb_get_property_reply_t* plain) {
    Strut strut;
    if (const auto values = values32(partial, XCB_ATOM_CARDINAL); values.size() >= 12) {
        std::copy_n(values.begin(), 12, strut.values.begin());
        return strut;
    }
    const auto values = values32(plain, XCB_ATOM_CARDINAL);
    if (values.size() < 4) return std::nullopt;
    std::copy_n(values.begin(), 4, strut.values.begin());
    for (std::size_t edge = 0; edge < 4; ++edge) strut.values[5 + 2 * edge] = 0xFFFF;
    return strut;
}

}  // namespace

struct X11Screens::Monitor {
    std::optional<DisplayId> id;
    bool primary = false;
    PixelRect frame;
    PixelRect visible;
};

X11Screens::X11Screens(XConnection& connection, XEvents& events, RunLoop& runLoop, double scale)
    : connection_(connection), runLoop_(runLoop), scale_(scale) {
    constexpr std::array<std::string_view, 4> names = {"_NET_WORKAREA", "_NET_CLIENT_LIST", "_NET_WM_STRUT",
                                                       "_NET_WM_STRUT_PARTIAL"};
    const auto atoms = connection_.intern(names);
    workArea_ = atoms[0];
    clientList_ = atoms[1];
    strut_ = atoms[2];
    strutPartial_ = atoms[3];
    if (const auto* extension = xcb_get_extension_data(connection_.get(), &xcb_randr_id);
        extension && extension->present) {
        randrEvents_ = extension->first_event;
        // The server sends only the events of the version that the client has named.
        connection_.discard(xcb_randr_query_version(connection_.get(), 1, 5));
        xcb_randr_select_input(connection_.get(), connection_.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    events.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscription_ = events.subscribe([this](const auto& event) { handle(event); });
    if (!read()) readLater();
}

std::optional<Screen> X11Screens::mainScreen() const {
    return screens_.empty() ? std::nullopt : std::optional(screens_.front());
}

DisplayId X11Screens::mainDisplayId() const {
    return screens_.empty() ? DisplayId{} : screens_.front().displayId.value_or(DisplayId{});
}

Subscription X11Screens::onParametersChanged(std::function<void()> action) {
    return changed_.subscribe(std::move(action));
}

Point X11Screens::location() const {
    const auto cookie = xcb_query_pointer(connection_.get(), connection_.root());
    if (const auto reply = connection_.reply<xcb_query_pointer_reply_t>(cookie))
        lastLocation_ = coordinates_.toPoints(reply->root_x, reply->root_y);
    return lastLocation_;
}

void X11Screens::handle(const xcb_generic_event_t& event) {
    const auto type = XEvents::type(event);
    if (randrEvents_ != 0 && (type == randrEvents_ || type == randrEvents_ + XCB_RANDR_NOTIFY)) {
        readLater();
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (configure.window == connection_.root()) readLater();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (property.window == connection_.root() && property.atom == workArea_) readLater();
    }
}

void X11Screens::readLater() {
    if (readTimer_.isActive()) return;
    readTimer_ = runLoop_.after(kCoalesce, [this] {
        readTimer_ = {};
        const auto before = screens_;
        if (!read()) {
            readTimer_ = runLoop_.after(kRetry, [this] {
                readTimer_ = {};
                readLater();
            });
        } else if (screens_ != before) {
            changed_.notify();
        }
    });
}

bool X11Screens::read() {
    auto monitors = readMonitors();
    if (!monitors) return false;
    std::stable_partition(monitors->begin(), monitors->end(),
                          [](const Monitor& monitor) { return monitor.primary; });
    cutOutPanels(*monitors);
    if (!monitors->empty()) coordinates_ = CoordinateSpace(monitors->front().frame, scale_);
    screens_.clear();
    for (const auto& monitor : *monitors)
        screens_.push_back({monitor.id, coordinates_.toPoints(monitor.frame),
                            coordinates_.toPoints(monitor.visible), scale_});
    return true;
}

std::optional<std::vector<X11Screens::Monitor>> X11Screens::readMonitors() {
    std::vector<Monitor> monitors;
    if (randrEvents_ == 0) {
        const auto& screen = connection_.screen();
        const PixelRect whole{0, 0, screen.width_in_pixels, screen.height_in_pixels};
        monitors.push_back({DisplayId{1}, true, whole, whole});
        return monitors;
    }
    const auto cookie = xcb_randr_get_monitors(connection_.get(), connection_.root(), 1);
    const auto reply = connection_.reply<xcb_randr_get_monitors_reply_t>(cookie);
    if (!reply) return std::nullopt;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
         xcb_randr_monitor_info_next(&it)) {
        const PixelRect frame{it.data->x, it.data->y, it.data->width, it.data->height};
        const auto* outputs = xcb_randr_monitor_info_outputs(it.data);
        const bool hasOutput = xcb_randr_monitor_info_outputs_length(it.data) > 0;
        const DisplayId id{hasOutput ? outputs[0] : it.data->name};
        if (frame.width > 0 && frame.height > 0)
            monitors.push_back({id, it.data->primary != 0, frame, frame});
    }
    return monitors;
}

void X11Screens::cutOutPanels(std::vector<Monitor>& monitors) {
    const auto rootCookie = xcb_get_geometry(connection_.get(), connection_.root());
    const auto listCookie =
        requestProperty(connection_, connection_.root(), clientList_, XCB_ATOM_WINDOW, kMostClients);
    const auto geometry = connection_.reply<xcb_get_geometry_reply_t>(rootCookie);
    const auto list = connection_.reply<xcb_get_property_reply_t>(listCookie);
    if (!geometry) return;
    const PixelRect root{0, 0, geometry->width, geometry->height};
    std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> cookies;
    for (const auto window : values32(list.get(), XCB_ATOM_WINDOW))
        cookies.emplace_back(requestProperty(connection_, window, strutPartial_, XCB_ATOM_CARDINAL, 12),
                             requestProperty(connection_, window, strut_, XCB_ATOM_CARDINAL, 4));
    for (const auto& [partialCookie, plainCookie] : cookies) {
        const auto partial = connection_.reply<xcb_get_property_reply_t>(partialCookie);
        const auto plain = connection_.reply<xcb_get_property_reply_t>(plainCookie);
        const auto strut = strutOf(partial.get(), plain.get());
        if (!strut) continue;
        for (auto& monitor : monitors)
            monitor.visible = without(*strut, monitor.visible, monitor.frame, root);
    }
}

std::optional<std::string> X11Screens::displayUuid(DisplayId display) const {
    static constexpr uuid_t kNamespace = {0x4f, 0x1d, 0x2c, 0x66, 0x0b, 0x7e, 0x4a, 0x90,
                                          0x9c, 0x51, 0x3e, 0x88, 0xd2, 0x07, 0x6a, 0x14};
    const auto infoCookie = xcb_randr_get_output_info(connection_.get(), display.value, XCB_CURRENT_TIME);
    const auto info = connection_.reply<xcb_randr_get_output_info_reply_t>(infoCookie);
    if (!info) return std::nullopt;
    constexpr std::array<std::string_view, 1> edidName = {"EDID"};
    const auto edidAtom = connection_.intern(edidName).front();
    const auto edidCookie =
        xcb_randr_get_output_property(connection_.get(), display.value, edidAtom, XCB_ATOM_ANY, 0, 64, 0, 0);
    const auto edid = connection_.reply<xcb_randr_get_output_property_reply_t>(edidCookie);
    std::string name(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())),
                     static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())));
    if (edid && edid->format == 8)
        name.append(reinterpret_cast<const char*>(xcb_randr_get_output_property_data(edid.get())),
                    edid->num_items);
    uuid_t uuid;
    uuid_generate_sha1(uuid, kNamespace, name.data(), name.size());
    char text[UUID_STR_LEN];
    uuid_unparse_upper(uuid, text);
    return text;
}

}  // namespace platform::x11
