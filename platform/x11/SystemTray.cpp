#include "platform/x11/SystemTray.h"

#include <algorithm>
#include <array>

namespace platform::x11 {

namespace {

constexpr std::uint32_t kRequestDock = 0;  // System Tray Protocol, SYSTEM_TRAY_REQUEST_DOCK
constexpr int kBeside = 2;
constexpr int kOpaque = 0xC0;
constexpr std::uint32_t kXembedMapped = 1;  // XEmbed, XEMBED_MAPPED

}  // namespace

SystemTray::SystemTray(XConnection& connection, XEvents& events, std::function<void(bool)> changed)
    : connection_(connection),
      selection_(connection, events, "_NET_SYSTEM_TRAY",
                 [changed = std::move(changed)](xcb_window_t owner) { changed(owner != XCB_WINDOW_NONE); }) {
    constexpr std::array<std::string_view, 2> names = {"_NET_SYSTEM_TRAY_OPCODE", "_XEMBED_INFO"};
    const auto atoms = connection.intern(names);
    opcode_ = atoms[0];
    xembedInfo_ = atoms[1];
}

void SystemTray::dock(WindowNumber window) const {
    const auto id = static_cast<xcb_window_t>(window.value);
    const std::array<std::uint32_t, 2> info = {0, kXembedMapped};
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id, xembedInfo_, xembedInfo_, 32,
                        info.size(), info.data());
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = selection_.owner();
    message.type = opcode_;
    message.data.data32[1] = kRequestDock;
    message.data.data32[2] = id;
    xcb_send_event(connection_.get(), 0, selection_.owner(), XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    connection_.flush();
}

xcb_window_t SystemTray::parentOf(WindowNumber window) const {
    const auto cookie = xcb_query_tree(connection_.get(), static_cast<xcb_window_t>(window.value));
    const auto tree = connection_.reply<xcb_query_tree_reply_t>(cookie);
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

bool SystemTray::hasTaken(WindowNumber window) const {
    const auto parent = parentOf(window);
    return parent != XCB_WINDOW_NONE && parent != connection_.root();
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
    const auto x = static_cast<std::int16_t>(std::max(place->dst_x - kBeside, 0));
    const auto y = static_cast<std::int16_t>(place->dst_y + size->height / 2);
    const auto cookie = xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, bar, x, y, 1, 1, ~0U);
    const auto image = connection_.reply<xcb_get_image_reply_t>(cookie);
    if (!image || xcb_get_image_data_length(image.get()) < 4) return std::nullopt;
    const auto* bytes = xcb_get_image_data(image.get());  // blue, green, red on every server of today
    const bool isTranslucent = image->depth == 32 && bytes[3] < kOpaque;
    if (isTranslucent) return std::nullopt;
    return Color{bytes[2] / 255.0, bytes[1] / 255.0, bytes[0] / 255.0};
}

}  // namespace platform::x11
