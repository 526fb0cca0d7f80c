#include "platform/freedesktop/KwinDesktops.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace platform::freedesktop {

namespace {

constexpr std::size_t kMostDesktops = 1000;

BusCall desktopsCall() {
    return propertiesRead("org.kde.KWin", "/VirtualDesktopManager", "org.kde.KWin.VirtualDesktopManager");
}

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

// From the properties of KWin's desktops.
std::optional<DesktopRow> desktopRow(const BusArguments& arguments) {
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

// One call whose answer is waited for.
struct BlockingCall {
    const SystemdFunctions& systemd;
    bool answered = false;
    std::optional<BusArguments> answer{};

    static int handle(sd_bus_message* message, void* self, sd_bus_error* /*error*/) {
        auto& call = *static_cast<BlockingCall*>(self);
        call.answered = true;
        call.answer = readArguments(call.systemd, message);
        return 1;
    }

    void waitOn(sd_bus* bus, Instant deadline) {
        while (!answered) {
            const int processed = systemd.sd_bus_process(bus, nullptr);
            const Duration left = deadline - std::chrono::steady_clock::now();
            if (processed < 0 || left <= Duration::zero()) return;
            if (processed > 0) continue;
            const auto microseconds = std::chrono::ceil<std::chrono::microseconds>(left).count();
            const int waited = systemd.sd_bus_wait(bus, static_cast<std::uint64_t>(microseconds));
            if (waited < 0 && waited != -EINTR) return;
        }
    }
};

}  // namespace

std::optional<DesktopRow> readKwinDesktops(SystemdLibrary& library, Duration timeout,
                                           const std::string& address) {
    const Instant deadline = std::chrono::steady_clock::now() + timeout;
    if (address.empty()) return std::nullopt;
    const auto* systemd = library.functions();
    if (!systemd) return std::nullopt;
    const auto bus = connectToBus(*systemd, address);
    if (!bus) return std::nullopt;
    BlockingCall call{*systemd};
    const auto slot = sendCall(*systemd, bus.get(), desktopsCall(), &BlockingCall::handle, &call);
    if (!slot) return std::nullopt;
    call.waitOn(bus.get(), deadline);
    return call.answer ? desktopRow(*call.answer) : std::nullopt;
}

Subscription KwinDesktops::request(Callback callback) {
    return bus_.call(desktopsCall(), [callback = std::move(callback)](const auto& arguments) {
        callback(arguments ? desktopRow(*arguments) : std::nullopt);
    });
}

}  // namespace platform::freedesktop
