#include "platform/x11/tray/SystemTray.h"

#include <algorithm>
#include <array>

namespace platform::x11 {

namespace {

constexpr std::uint32_t kRequestDock = 0;  // System Tray Protocol, SYSTEM_TRAY_REQUEST_DOCK
constexpr int kDepthWithAlpha = 32;
constexpr int kSampleDistance = 2;          // pixels beside the icon
constexpr int kLeastAlpha = 192;            // of 255: below, the bar shows the wallpaper
constexpr std::uint32_t kXembedMapped = 1;  // XEmbed, XEMBED_MAPPED

}  // namespace

SystemTray::SystemTray(XConnection& connection, const Atoms& atoms, XEvents& events,
                       std::function<void()> changed)
    : connection_(connection),
      atoms_(atoms),
      events_(events),
      selection_(connection, events, atoms[Atom::NetSystemTraySelection],
                 [changed = std::move(changed)](auto) { changed(); }) {}

std::optional<WindowNumber> SystemTray::owner() const {
    const auto owner = selection_.owner();
    return owner == XCB_WINDOW_NONE ? std::nullopt : std::optional(WindowNumber{owner});
}

bool SystemTray::wantsAlpha() const {
    const auto cookie = requestProperty(connection_, selection_.owner(), atoms_[Atom::NetSystemTrayVisual],
                                        XCB_ATOM_VISUALID, 1);
    const auto reply = connection_.reply<xcb_get_property_reply_t>(cookie);
    const auto visual = value32(reply.get(), XCB_ATOM_VISUALID);
    return visual && hasAlpha(*visual);
}

bool SystemTray::hasAlpha(xcb_visualid_t visual) const {
    for (auto depths = xcb_screen_allowed_depths_iterator(&connection_.screen()); depths.rem > 0;
         xcb_depth_next(&depths)) {
        const std::span visuals(xcb_depth_visuals(depths.data),
                                static_cast<std::size_t>(xcb_depth_visuals_length(depths.data)));
        if (std::ranges::find(visuals, visual, &xcb_visualtype_t::visual_id) != visuals.end())
            return depths.data->depth == kDepthWithAlpha;
    }
    return false;
}

Subscription SystemTray::dock(WindowNumber window, std::function<void(bool isTaken)> changed) {
    const auto id = static_cast<xcb_window_t>(window.value);
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), id, XCB_CW_EVENT_MASK, &mask);
    const std::array<std::uint32_t, 2> info = {0, kXembedMapped};
    const auto xembedInfo = atoms_[Atom::XembedInfo];
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id, xembedInfo, xembedInfo, 32, info.size(),
                        info.data());
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = selection_.owner();
    message.type = atoms_[Atom::NetSystemTrayOpcode];
    message.data.data32[1] = kRequestDock;
    message.data.data32[2] = id;
    xcb_send_event(connection_.get(), 0, selection_.owner(), XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    connection_.flush();
    return events_.subscribe(
        [id, root = connection_.root(), changed = std::move(changed)](const auto& event) {
            if (XEvents::type(event) != XCB_REPARENT_NOTIFY) return;
            const auto& moved = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
            if (moved.window == id) changed(moved.parent != root);
        });
}

xcb_window_t SystemTray::parentOf(WindowNumber window) const {
    const auto cookie = xcb_query_tree(connection_.get(), static_cast<xcb_window_t>(window.value));
    const auto tree = connection_.reply<xcb_query_tree_reply_t>(cookie);
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

std::optional<Color> SystemTray::colorBeside(WindowNumber window) const {
    auto* xcb = connection_.get();
    const auto id = static_cast<xcb_window_t>(window.value);
    xcb_window_t bar = id;
    for (auto next = parentOf(window); next != XCB_WINDOW_NONE && next != connection_.root();) {
        bar = next;
        next = parentOf({bar});
    }
    const auto sizeCookie = xcb_get_geometry(xcb, id);
    const auto placeCookie = xcb_translate_coordinates(xcb, id, bar, 0, 0);
    const auto size = connection_.reply<xcb_get_geometry_reply_t>(sizeCookie);
    const auto place = connection_.reply<xcb_translate_coordinates_reply_t>(placeCookie);
    if (!size || !place || bar == id) return std::nullopt;
    const auto x = static_cast<std::int16_t>(std::max(place->dst_x - kSampleDistance, 0));
    const auto y = static_cast<std::int16_t>(place->dst_y + size->height / 2);
    const auto cookie = xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, bar, x, y, 1, 1, ~0U);
    const auto image = connection_.reply<xcb_get_image_reply_t>(cookie);
    if (!image || xcb_get_image_data_length(image.get()) < 4) return std::nullopt;
    const auto* bytes = xcb_get_image_data(image.get());  // blue, green, red on every server of today
    const bool isTranslucent = image->depth == kDepthWithAlpha && bytes[3] < kLeastAlpha;
    if (isTranslucent) return std::nullopt;
    return Color{bytes[2] / 255.0, bytes[1] / 255.0, bytes[0] / 255.0};
}

}  // namespace platform::x11
