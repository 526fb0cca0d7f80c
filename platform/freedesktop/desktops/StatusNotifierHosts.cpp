#include "platform/freedesktop/desktops/StatusNotifierHosts.h"

#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kPath = "/StatusNotifierWatcher";

}  // namespace

StatusNotifierHosts::StatusNotifierHosts(MessageBus& bus, std::function<void(bool)> changed)
    : registered_(bus, {kWatcher, kPath, kWatcher, "IsStatusNotifierHostRegistered"},
                  [this, changed = std::move(changed)] { changed(isThere()); }) {
    for (const char* member : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        signals_.push_back(
            bus.subscribe({.sender = kWatcher, .path = kPath, .interface = kWatcher, .member = member},
                          [this](const auto&) { registered_.read(); }));
}

}  // namespace platform::freedesktop
