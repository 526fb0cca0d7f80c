#include "platform/freedesktop/desktops/KwinShortcuts.h"

#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kDaemon = "org.kde.kglobalaccel";
constexpr const char* kKwin = "kwin";

// Each shortcut is a structure: the action's name and five more names, its keys and its usual keys, as
// signed numbers, 0 being no key.
std::vector<KwinShortcut> shortcutsIn(const BusArguments& infos) {
    constexpr std::size_t kName = 0, kKeys = 6;
    std::vector<KwinShortcut> shortcuts;
    for (const auto& info : infos) {
        if (!info.is_array() || info.size() <= kKeys || !info[kName].is_string()) continue;
        for (const auto& key : info[kKeys])
            if (key.is_number_integer() && key.get<std::int64_t>() != 0)
                shortcuts.push_back(
                    {info[kName].get<std::string>(), static_cast<std::uint32_t>(key.get<std::int64_t>())});
    }
    return shortcuts;
}

// The first argument names the action: its component, its own name, and both as the user knows them.
bool isOfKwin(const BusArguments& arguments) {
    return !arguments.empty() && arguments[0].is_array() && !arguments[0].empty() && arguments[0][0] == kKwin;
}

}  // namespace

void KwinShortcuts::request(Callback callback) {
    call_ = bus_.call({.service = kDaemon,
                       .path = "/component/kwin",
                       .interface = "org.kde.kglobalaccel.Component",
                       .member = "allShortcutInfos",
                       .timeout = kLongestPatientCall},
                      [callback = std::move(callback)](const auto& arguments) {
                          if (arguments && arguments->size() == 1) callback(shortcutsIn(arguments->front()));
                      });
}

Subscription KwinShortcuts::onChange(std::function<void()> action) {
    return bus_.subscribe({.sender = kDaemon, .path = "/kglobalaccel", .interface = "org.kde.KGlobalAccel"},
                          [action = std::move(action)](const auto& arguments) {
                              if (isOfKwin(arguments)) action();
                          });
}

}  // namespace platform::freedesktop
