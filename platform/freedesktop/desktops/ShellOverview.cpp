#include "platform/freedesktop/desktops/ShellOverview.h"

#include <algorithm>
#include <utility>

namespace platform::freedesktop {

ShellOverview::Shell ShellOverview::gnomeShell() {
    return {"GNOME Shell", "org.gnome.Shell", "/org/gnome/Shell", {"OverviewActive"}};
}

ShellOverview::Shell ShellOverview::cinnamon() {
    return {"Cinnamon", "org.Cinnamon", "/org/Cinnamon", {"OverviewActive", "ExpoActive"}};
}

ShellOverview::ShellOverview(MessageBus& bus, Shell shell) : shell_(std::move(shell)) {
    const auto update = [this] {
        isOpen_ = std::ranges::any_of(
            properties_, [](const auto& property) { return property->value() == nlohmann::json(true); });
        tellOverviewChanged();
    };
    for (const auto& property : shell_.properties)
        properties_.push_back(std::make_unique<BusProperty>(
            bus, BusPropertyName{shell_.service, shell_.path, shell_.service, property}, update));
}

std::optional<BusCall> ShellOverview::openingCall() const {
    if (!mayOpen()) return std::nullopt;
    return BusCall{.service = shell_.service,
                   .path = shell_.path,
                   .interface = "org.freedesktop.DBus.Properties",
                   .member = "Set",
                   .arguments = {shell_.service, shell_.properties.front(), BusVariant{true}}};
}

}  // namespace platform::freedesktop
