#include "platform/freedesktop/desktops/KwinDesktopRow.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/freedesktop/bus/BareBusCall.h"

namespace platform::freedesktop {

namespace {

bool isDesktop(const nlohmann::json& entry) {
    return entry.is_array() && entry.size() == 3 && entry[0].is_number_integer() && entry[1].is_string() &&
           !entry[1].get_ref<const std::string&>().empty() && entry[2].is_string();
}

// From an array of (position, id, name), the position being signed or unsigned by KWin's version.
std::vector<std::string> desktopIds(const nlohmann::json& entries) {
    if (!entries.is_array() || entries.size() > kMostDesktops) return {};
    if (!std::all_of(entries.begin(), entries.end(), isDesktop)) return {};
    std::vector<std::pair<std::int64_t, std::string>> desktops;
    for (const auto& entry : entries) desktops.emplace_back(entry[0], entry[1]);
    std::ranges::stable_sort(desktops, {}, &std::pair<std::int64_t, std::string>::first);
    std::vector<std::string> ids;
    ids.reserve(desktops.size());
    for (auto& desktop : desktops) ids.push_back(std::move(desktop.second));
    return ids;
}

}  // namespace

BusCall kwinDesktopsCall() {
    return propertiesRead("org.kde.KWin", "/VirtualDesktopManager", "org.kde.KWin.VirtualDesktopManager");
}

std::optional<DesktopRow> kwinDesktopRow(const BusArguments& arguments) {
    if (arguments.size() != 1 || !arguments[0].is_array()) return std::nullopt;
    DesktopRow row;
    std::string current;
    for (const auto& property : arguments[0]) {
        if (!property.is_array() || property.size() != 2) return std::nullopt;
        if (property[0] == "desktops") row.ids = desktopIds(property[1]);
        if (property[0] == "current" && property[1].is_string()) current = property[1];
    }
    if (row.ids.empty()) return std::nullopt;
    if (const auto found = std::ranges::find(row.ids, current); found != row.ids.end())
        row.current = static_cast<std::uint32_t>(found - row.ids.begin());
    return row;
}

std::optional<DesktopRow> readKwinDesktops(Duration timeout, const std::string& address) {
    const auto answer = askBus(address, kwinDesktopsCall(), std::chrono::steady_clock::now() + timeout);
    return answer ? kwinDesktopRow(*answer) : std::nullopt;
}

}  // namespace platform::freedesktop
