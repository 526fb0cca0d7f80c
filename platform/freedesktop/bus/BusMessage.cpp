#include "platform/freedesktop/bus/BusMessage.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/Text.h"
#include "platform/freedesktop/files/Quoting.h"

namespace platform::freedesktop {

namespace {

bool isSet(const char* text) {
    return text && *text;
}

// The entries of a semicolon-separated address list that are Unix sockets.
std::string unixAddresses(std::string_view list) {
    std::string kept;
    for (const auto entry : split(list, ';')) {
        if (!entry.starts_with("unix:")) continue;
        if (!kept.empty()) kept += ';';
        kept += entry;
    }
    return kept;
}

}  // namespace

BusCall propertyRead(std::string service, std::string path, std::string interface, std::string property) {
    return {.service = std::move(service),
            .path = std::move(path),
            .interface = "org.freedesktop.DBus.Properties",
            .member = "Get",
            .arguments = {std::move(interface), std::move(property)}};
}

BusCall propertiesRead(std::string service, std::string path, std::string interface) {
    return {.service = std::move(service),
            .path = std::move(path),
            .interface = "org.freedesktop.DBus.Properties",
            .member = "GetAll",
            .arguments = {std::move(interface)}};
}

std::string sessionBusAddress() {
    return sessionBusAddress(std::getenv("DBUS_SESSION_BUS_ADDRESS"), std::getenv("XDG_RUNTIME_DIR"));
}

std::string sessionBusAddress(const char* busAddress, const char* runtimeFolder) {
    if (isSet(busAddress)) return unixAddresses(busAddress);
    if (isSet(runtimeFolder)) return "unix:path=" + percentEncoded(runtimeFolder) + "/bus";
    return {};
}

std::string systemBusAddress() {
    return systemBusAddress(std::getenv("DBUS_SYSTEM_BUS_ADDRESS"));
}

std::string systemBusAddress(const char* busAddress) {
    return isSet(busAddress) ? unixAddresses(busAddress) : "unix:path=/run/dbus/system_bus_socket";
}

}  // namespace platform::freedesktop
