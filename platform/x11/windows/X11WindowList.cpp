#include "platform/x11/windows/X11WindowList.h"

#include <fcntl.h>
#include <unistd.h>
#include <xcb/randr.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_set>

namespace platform::x11 {

namespace {

constexpr std::uint32_t kMostWindows = 65536;

// The origin of the main display: of the primary monitor, or of the first when none is primary.
Point mainOrigin(const xcb_randr_get_monitors_reply_t* monitors) {
    if (!monitors) return {};
    auto monitor = xcb_randr_get_monitors_monitors_iterator(monitors);
    std::optional<Point> first;
    for (; monitor.rem > 0; xcb_randr_monitor_info_next(&monitor)) {
        const Point origin{double(monitor.data->x), double(monitor.data->y)};
        if (monitor.data->primary) return origin;
        if (!first) first = origin;
    }
    return first.value_or(Point{});
}

std::optional<std::string> processName(std::int64_t pid) {
    const int file = open(("/proc/" + std::to_string(pid) + "/comm").c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    std::array<char, 64> name{};
    const auto length = read(file, name.data(), name.size());
    close(file);
    if (length <= 1) return std::nullopt;
    return std::string(name.data(), static_cast<std::size_t>(length) - 1);  // without its line feed
}

// The windows in stacking order, behind them the windows that the stacking order lacks: xfwm4 leaves out a
// window that came up on another desktop until it is first shown.
std::vector<xcb_window_t> backToFront(std::span<const std::uint32_t> stacking,
                                      std::span<const std::uint32_t> all) {
    const std::unordered_set<xcb_window_t> stacked(stacking.begin(), stacking.end());
    std::vector<xcb_window_t> windows;
    std::ranges::copy_if(all, std::back_inserter(windows), [&](auto w) { return !stacked.contains(w); });
    windows.insert(windows.end(), stacking.begin(), stacking.end());
    return windows;
}

}  // namespace

void X11WindowList::prefetch(const XConnection& connection) {
    xcb_prefetch_extension_data(connection.get(), &xcb_randr_id);
}

std::optional<X11WindowList::Listing> X11WindowList::readListing() const {
    const auto* randr = xcb_get_extension_data(connection_.get(), &xcb_randr_id);
    const bool hasMonitors = randr && randr->present;
    const auto ask = [&](Atom property, xcb_atom_t type, std::uint32_t longs) {
        return requestProperty(connection_, connection_.root(), atoms_[property], type, longs);
    };
    const auto get = [&](auto cookie) { return connection_.reply<xcb_get_property_reply_t>(cookie); };
    const auto stackingCookie = ask(Atom::NetClientListStacking, XCB_ATOM_WINDOW, kMostWindows);
    const auto listCookie = ask(Atom::NetClientList, XCB_ATOM_WINDOW, kMostWindows);
    const auto countCookie = ask(Atom::NetNumberOfDesktops, XCB_ATOM_CARDINAL, 1);
    xcb_randr_get_monitors_cookie_t monitorsCookie{};
    if (hasMonitors) {
        connection_.discard(xcb_randr_query_version(connection_.get(), 1, 5));
        monitorsCookie = xcb_randr_get_monitors(connection_.get(), connection_.root(), 1);
    }

    const auto stacking = get(stackingCookie);
    const auto list = get(listCookie);
    const auto count = value32(get(countCookie).get(), XCB_ATOM_CARDINAL).value_or(0);
    Listing listing;
    if (hasMonitors)
        listing.origin = mainOrigin(connection_.reply<xcb_randr_get_monitors_reply_t>(monitorsCookie).get());
    const auto isWindowList = [](const auto& reply) { return reply && reply->type == XCB_ATOM_WINDOW; };
    if (!isWindowList(stacking) && !isWindowList(list)) return std::nullopt;
    listing.windows =
        backToFront(values32(stacking.get(), XCB_ATOM_WINDOW), values32(list.get(), XCB_ATOM_WINDOW));
    listing.desktopCount = count <= kMostDesktops ? count : 0;
    return listing;
}

std::optional<std::vector<WindowInfo>> X11WindowList::copyWindowsExcludingDesktopElements() const {
    const auto listing = readListing();
    if (!listing) return std::nullopt;
    std::vector<X11WindowRequest> requests;
    requests.reserve(listing->windows.size());
    for (const auto window : listing->windows) requests.push_back(requestWindow(connection_, atoms_, window));

    desktops_.clear();
    desktopCount_ = listing->desktopCount;
    std::vector<WindowInfo> infos;
    infos.reserve(requests.size());
    const auto get = [this](auto cookie) { return connection_.reply<xcb_get_property_reply_t>(cookie); };
    for (std::size_t i = 0; i < requests.size(); ++i) {
        const auto& request = requests[i];
        const X11WindowReplies replies = {
            connection_.reply<xcb_get_geometry_reply_t>(request.geometry),
            connection_.reply<xcb_translate_coordinates_reply_t>(request.position),
            get(request.frameExtents),
            get(request.desktop),
            get(request.types),
            get(request.states),
            get(request.windowClass),
            get(request.pid),
            get(request.opacity)};
        auto window = parseWindow(atoms_, listing->windows[i], replies, listing->origin);
        if (!window || window->isDesktopElement) continue;
        if (!window->info.ownerName && window->info.ownerPid)
            window->info.ownerName = processName(*window->info.ownerPid);
        desktops_[listing->windows[i]] = window->desktop;
        infos.push_back(std::move(window->info));
    }
    std::ranges::reverse(infos);
    return infos;
}

std::vector<ManagedSpaceId> X11WindowList::copySpacesForWindow(WindowNumber window) const {
    const auto found = desktops_.find(static_cast<xcb_window_t>(window.value));
    return found == desktops_.end() ? std::vector<ManagedSpaceId>()
                                    : managedSpaceIds(found->second, desktopCount_);
}

}  // namespace platform::x11
