#include "platform/x11/windows/FullScreenWindows.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

namespace {

constexpr auto kFrame = std::chrono::milliseconds(16);
constexpr auto kLongestPause = std::chrono::seconds(1);
constexpr std::uint32_t kMostStates = 64;

bool overlap(const PixelRect& a, const PixelRect& b) {
    if (a.width == 0 || b.width == 0) return false;
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

bool shareADesktop(std::optional<std::uint32_t> a, std::optional<std::uint32_t> b) {
    return a == b || a == kEveryDesktop || b == kEveryDesktop;
}

}  // namespace

FullScreenWindows::FullScreenWindows(XConnection& connection, const Atoms& atoms, XEvents& events,
                                     RunLoop& runLoop, std::function<void()> changed)
    : connection_(connection),
      atoms_(atoms),
      runLoop_(runLoop),
      changed_(std::move(changed)),
      backoff_(kFrame, kLongestPause),
      subscription_(events.subscribe([this](const auto& event) { handle(event); })) {
    events.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    readLater(Duration::zero());
}

bool FullScreenWindows::covers(const Window& window, const Subject& subject) {
    return shareADesktop(window.desktop, subject.desktop) && overlap(window.place, subject.place);
}

bool FullScreenWindows::covers(const Subject& subject) const {
    return std::ranges::any_of(inFront_, [&](const Window& window) { return covers(window, subject); });
}

bool FullScreenWindows::liesBefore(const Subject& subject) const {
    return std::ranges::any_of(inFront_, [&](const Window& window) {
        return covers(window, subject) && std::ranges::count(window.above, subject.window) > 0;
    });
}

void FullScreenWindows::handle(const xcb_generic_event_t& event) {
    bool changes = false;
    if (XEvents::type(event) == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        changes = property.window == connection_.root()
                      ? property.atom == atoms_[Atom::NetClientListStacking] ||
                            property.atom == atoms_[Atom::NetActiveWindow]
                      : property.atom == atoms_[Atom::NetWmState] && followed_.contains(property.window);
    } else if (XEvents::type(event) == XCB_CONFIGURE_NOTIFY) {
        const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        changes = std::ranges::count(inFront_, configure.window, &Window::window) > 0;
    } else if (XEvents::type(event) == XCB_DESTROY_NOTIFY) {
        followed_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    }
    if (changes && !readTimer_.isActive()) readLater(kFrame);
}

void FullScreenWindows::readLater(Duration delay) {
    readTimer_ = runLoop_.after(delay, [this] {
        readTimer_ = {};
        read();
    });
}

// Selecting replaces this program's earlier selection on the window, so the mask holds what other parts
// select.
void FullScreenWindows::follow(xcb_window_t window) {
    if (!followed_.insert(window).second) return;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &mask);
}

void FullScreenWindows::read() {
    const auto stack = readStack();
    auto windows = readFullScreen(stack);
    if (!windows.empty()) {
        windows.push_back({.window = stack.active});
        readPlaces(windows);
        const auto active = windows.back();
        windows.pop_back();
        std::erase_if(windows, [&](const Window& window) {
            return window.window != active.window &&
                   covers(window, {active.window, active.desktop, active.place});
        });
    }
    if (connection_.isLate()) return readLater(backoff_.next());
    backoff_.reset();
    if (std::exchange(inFront_, windows) != windows) changed_();
}

FullScreenWindows::Stack FullScreenWindows::readStack() {
    const auto stackCookie = requestProperty(
        connection_, connection_.root(), atoms_[Atom::NetClientListStacking], XCB_ATOM_WINDOW, kMostClients);
    const auto activeCookie =
        requestProperty(connection_, connection_.root(), atoms_[Atom::NetActiveWindow], XCB_ATOM_WINDOW, 1);
    const auto windows = connection_.reply<xcb_get_property_reply_t>(stackCookie);
    const auto active = connection_.reply<xcb_get_property_reply_t>(activeCookie);
    const auto values = values32(windows.get(), XCB_ATOM_WINDOW);
    Stack stack{{values.begin(), values.end()},
                value32(active.get(), XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE)};
    if (stack.active != XCB_WINDOW_NONE) follow(stack.active);
    return stack;
}

std::vector<FullScreenWindows::Window> FullScreenWindows::readFullScreen(const Stack& stack) {
    std::vector<xcb_get_property_cookie_t> cookies;
    for (const auto window : stack.windows)
        cookies.push_back(
            requestProperty(connection_, window, atoms_[Atom::NetWmState], XCB_ATOM_ATOM, kMostStates));
    std::vector<Window> found;
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const auto reply = connection_.reply<xcb_get_property_reply_t>(cookies[i]);
        const auto states = values32(reply.get(), XCB_ATOM_ATOM);
        const auto has = [&](xcb_atom_t state) { return std::ranges::count(states, state) > 0; };
        if (!has(atoms_[Atom::NetWmStateFullscreen]) || has(atoms_[Atom::NetWmStateHidden])) continue;
        follow(stack.windows[i]);
        found.push_back(
            {.window = stack.windows[i],
             .above = {stack.windows.begin() + static_cast<std::ptrdiff_t>(i) + 1, stack.windows.end()}});
    }
    return found;
}

// A window that has died meanwhile gets no place, nor does XCB_WINDOW_NONE.
void FullScreenWindows::readPlaces(std::span<Window> windows) {
    struct Request {
        xcb_get_geometry_cookie_t size;
        xcb_translate_coordinates_cookie_t origin;
        xcb_get_property_cookie_t desktop;
    };
    std::vector<Request> requests;
    for (const auto& [window, desktop, place, above] : windows)
        requests.push_back(
            {xcb_get_geometry(connection_.get(), window),
             xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0),
             requestProperty(connection_, window, atoms_[Atom::NetWmDesktop], XCB_ATOM_CARDINAL, 1)});
    for (std::size_t i = 0; i < requests.size(); ++i) {
        const auto size = connection_.reply<xcb_get_geometry_reply_t>(requests[i].size);
        const auto origin = connection_.reply<xcb_translate_coordinates_reply_t>(requests[i].origin);
        const auto desktop = connection_.reply<xcb_get_property_reply_t>(requests[i].desktop);
        if (size && origin) windows[i].place = {origin->dst_x, origin->dst_y, size->width, size->height};
        windows[i].desktop = value32(desktop.get(), XCB_ATOM_CARDINAL);
    }
}

}  // namespace platform::x11
