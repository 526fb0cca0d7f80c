#include "platform/x11/connection/XConnection.h"

#include <poll.h>
#include <xcb/xcbext.h>

#include <algorithm>

namespace platform::x11 {

namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0 && number > 0; --number) xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

}  // namespace

Instant monotonicNow() {
    return std::chrono::time_point_cast<Duration>(std::chrono::steady_clock::now());
}

std::unique_ptr<XConnection> XConnection::open(const char* displayName, Duration patience) {
    int screenNumber = 0;
    auto* opened = xcb_connect(displayName, &screenNumber);
    std::unique_ptr<XConnection> connection(new XConnection(opened, screenNumber, patience));
    if (connection->isBroken()) return nullptr;
    connection->screen_ = screenOf(opened, screenNumber);
    return connection->screen_ ? std::move(connection) : nullptr;
}

XConnection::XConnection(xcb_connection_t* connection, int screenNumber, Duration patience)
    : connection_(connection), screenNumber_(screenNumber), patience_(patience), patienceLeft_(patience) {}

XConnection::~XConnection() {
    xcb_disconnect(connection_);
}

void XConnection::beginTurn() {
    patienceLeft_ = patience_;
    late_ = false;
}

void* XConnection::waitForReply(unsigned sequence) {
    const auto start = monotonicNow();
    auto end = start + patienceLeft_;
    if (deadline_) end = std::min(end, *deadline_);
    xcb_flush(connection_);
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (xcb_poll_for_reply(connection_, sequence, &reply, &error) == 0) {
        if (!waitUntilReadable(end)) {
            xcb_discard_reply(connection_, sequence);
            late_ = true;
            break;
        }
    }
    std::free(error);
    patienceLeft_ = std::max(patienceLeft_ - (monotonicNow() - start), Duration::zero());
    if (afterWait_) afterWait_();
    return reply;
}

bool XConnection::waitUntilReadable(Instant end) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - monotonicNow()).count();
    pollfd readable{descriptor(), POLLIN, 0};
    return left > 0 && (poll(&readable, 1, static_cast<int>(left)) != 0 || monotonicNow() < end);
}

Reply<xcb_generic_event_t> XConnection::nextEvent(Instant end) {
    if (deadline_) end = std::min(end, *deadline_);
    xcb_flush(connection_);
    while (!isBroken()) {
        if (auto* event = xcb_poll_for_event(connection_)) return Reply<xcb_generic_event_t>(event);
        if (!waitUntilReadable(end)) break;
    }
    return nullptr;
}

void XConnection::synchronize() {
    const auto done = reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection_));
}

xcb_get_property_cookie_t requestProperty(const XConnection& connection, xcb_window_t window,
                                          xcb_atom_t property, xcb_atom_t type, std::uint32_t longs) {
    return xcb_get_property(connection.get(), 0, window, property, type, 0, longs);
}

void setProperty32(const XConnection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                   std::initializer_list<std::uint32_t> values) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.begin());
}

std::span<const std::uint32_t> values32(const xcb_get_property_reply_t* reply, xcb_atom_t type) {
    if (!reply || reply->type != type || reply->format != 32) return {};
    return {static_cast<const std::uint32_t*>(xcb_get_property_value(reply)), reply->value_len};
}

std::optional<std::uint32_t> value32(const xcb_get_property_reply_t* reply, xcb_atom_t type) {
    const auto values = values32(reply, type);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

std::string_view text8(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply)), reply->value_len};
}

void sendRootMessage(const XConnection& connection, xcb_window_t window, xcb_atom_t type,
                     std::span<const std::uint32_t> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), event.data.data32);
    xcb_send_event(connection.get(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

}  // namespace platform::x11
