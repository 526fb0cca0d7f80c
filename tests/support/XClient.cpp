#include "tests/support/XClient.h"

#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace desktop_test {

namespace {
constexpr std::uint32_t kLongestProperty = 1U << 20U;  // in 32-bit units
constexpr std::uint32_t kFromPager = 2;                // EWMH source indication
}  // namespace

XClient::XClient(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (!isAlive()) throw std::runtime_error("cannot reach the X server " + display);
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection())).data;
}

xcb_atom_t XClient::atom(const std::string& name) {
    const auto [entry, isNew] = atoms_.try_emplace(name, XCB_ATOM_NONE);
    if (isNew) {
        const auto cookie =
            xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection(), cookie, nullptr));
        if (reply) entry->second = reply->atom;
    }
    return entry->second;
}

std::string XClient::atomName(xcb_atom_t atom) const {
    const Reply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection(), xcb_get_atom_name(connection(), atom), nullptr));
    if (!reply) return {};
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

Reply<xcb_get_property_reply_t> XClient::property(xcb_window_t window, const std::string& name) {
    const auto cookie =
        xcb_get_property(connection(), 0, window, atom(name), XCB_ATOM_ANY, 0, kLongestProperty);
    return Reply<xcb_get_property_reply_t>(xcb_get_property_reply(connection(), cookie, nullptr));
}

std::optional<std::vector<std::uint32_t>> XClient::cardinals(xcb_window_t window, const std::string& name) {
    const auto reply = property(window, name);
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 32) return std::nullopt;
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return std::vector(values, values + reply->value_len);
}

std::optional<std::uint32_t> XClient::cardinal(xcb_window_t window, const std::string& name) {
    const auto values = cardinals(window, name);
    if (!values || values->empty()) return std::nullopt;
    return values->front();
}

std::optional<std::string> XClient::text(xcb_window_t window, const std::string& name) {
    const auto reply = property(window, name);
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 8) return std::nullopt;
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len);
}

std::vector<std::string> XClient::atoms(xcb_window_t window, const std::string& name) {
    std::vector<std::string> names;
    for (const auto value : cardinals(window, name).value_or(std::vector<std::uint32_t>()))
        names.push_back(atomName(value));
    return names;
}

void XClient::setCardinals(xcb_window_t window, const std::string& name,
                           std::span<const std::uint32_t> values) {
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom(name), XCB_ATOM_CARDINAL, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    synchronize();
}

void XClient::removeProperty(xcb_window_t window, const std::string& name) {
    xcb_delete_property(connection(), window, atom(name));
    synchronize();
}

// EWMH: the check window exists while its window manager lives, and names itself.
bool XClient::hasWindowManager() {
    const auto check = cardinal(root(), "_NET_SUPPORTING_WM_CHECK");
    return check && cardinal(*check, "_NET_SUPPORTING_WM_CHECK") == check;
}

std::optional<std::uint32_t> XClient::numberOfDesktops() {
    return cardinal(root(), "_NET_NUMBER_OF_DESKTOPS");
}

std::optional<std::uint32_t> XClient::currentDesktop() {
    return cardinal(root(), "_NET_CURRENT_DESKTOP");
}

std::optional<std::uint32_t> XClient::desktopOf(xcb_window_t window) {
    return cardinal(window, "_NET_WM_DESKTOP");
}

std::optional<xcb_window_t> XClient::activeWindow() {
    return cardinal(root(), "_NET_ACTIVE_WINDOW");
}

std::vector<xcb_window_t> XClient::clients() {
    return cardinals(root(), "_NET_CLIENT_LIST").value_or(std::vector<xcb_window_t>());
}

std::vector<xcb_window_t> XClient::stackedClients() {
    return cardinals(root(), "_NET_CLIENT_LIST_STACKING").value_or(std::vector<xcb_window_t>());
}

bool XClient::hasCompositor() {
    const auto cookie = xcb_get_selection_owner(connection(), atom("_NET_WM_CM_S0"));
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection(), cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void XClient::sendToRoot(xcb_window_t window, const std::string& message,
                         std::span<const std::uint32_t> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), event.data.data32);
    xcb_send_event(connection(), 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    synchronize();
}

void XClient::switchToDesktop(std::uint32_t desktop) {
    sendToRoot(root(), "_NET_CURRENT_DESKTOP", std::array{desktop, std::uint32_t{XCB_CURRENT_TIME}});
}

void XClient::setNumberOfDesktops(std::uint32_t count) {
    sendToRoot(root(), "_NET_NUMBER_OF_DESKTOPS", std::array{count});
}

void XClient::moveToDesktop(xcb_window_t window, std::uint32_t desktop) {
    sendToRoot(window, "_NET_WM_DESKTOP", std::array{desktop, kFromPager});
}

std::vector<xcb_window_t> XClient::allWindows() {
    std::vector<xcb_window_t> windows{root()};
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto cookie = xcb_query_tree(connection(), windows[i]);
        const Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection(), cookie, nullptr));
        if (!reply) continue;
        const auto* children = xcb_query_tree_children(reply.get());
        windows.insert(windows.end(), children, children + xcb_query_tree_children_length(reply.get()));
    }
    return windows;
}

std::optional<xcb_window_t> XClient::findByTitle(const std::string& title) {
    for (const auto window : allWindows())
        if (text(window, "_NET_WM_NAME") == title) return window;
    return std::nullopt;
}

std::vector<xcb_window_t> XClient::findByPid(std::uint32_t pid) {
    auto windows = allWindows();
    std::erase_if(windows, [&](auto window) { return cardinal(window, "_NET_WM_PID") != pid; });
    return windows;
}

xcb_window_t XClient::frameOf(xcb_window_t window) {
    for (;;) {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
        if (!tree || tree->parent == root() || tree->parent == XCB_WINDOW_NONE) return window;
        window = tree->parent;
    }
}

MapState XClient::mapState(xcb_window_t window) {
    const auto cookie = xcb_get_window_attributes(connection(), window);
    const Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection(), cookie, nullptr));
    return reply ? static_cast<MapState>(reply->map_state) : MapState::Unmapped;
}

std::optional<Rectangle> XClient::geometry(xcb_window_t window) {
    const auto sizeCookie = xcb_get_geometry(connection(), window);
    const auto placeCookie = xcb_translate_coordinates(connection(), window, root(), 0, 0);
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection(), sizeCookie, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection(), placeCookie, nullptr));
    if (!size || !place) return std::nullopt;
    return Rectangle{place->dst_x, place->dst_y, size->width, size->height};
}

std::vector<Rectangle> XClient::shape(xcb_window_t window, ShapeKind kind) {
    const auto cookie = xcb_shape_get_rectangles(connection(), window, static_cast<xcb_shape_sk_t>(kind));
    const Reply<xcb_shape_get_rectangles_reply_t> reply(
        xcb_shape_get_rectangles_reply(connection(), cookie, nullptr));
    std::vector<Rectangle> rectangles;
    if (!reply) return rectangles;
    const auto* parts = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
        rectangles.push_back({parts[i].x, parts[i].y, parts[i].width, parts[i].height});
    return rectangles;
}

bool XClient::isPointerFree() {
    const auto cookie = xcb_grab_pointer(connection(), 0, root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(connection(), cookie, nullptr));
    xcb_ungrab_pointer(connection(), XCB_CURRENT_TIME);
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

xcb_window_t XClient::inputFocus() {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

void XClient::synchronize() {
    (void)inputFocus();
}

}  // namespace desktop_test
