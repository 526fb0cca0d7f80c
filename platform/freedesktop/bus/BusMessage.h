#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

#include "platform/RunLoop.h"

namespace platform::freedesktop {

// An argument whose D-Bus type is "v" and holds that value.
struct BusVariant {
    std::variant<bool, std::int32_t, std::uint32_t, std::string> value;
};
// The D-Bus types b, i, u, t, s, as and v.
using BusArgument = std::variant<bool, std::int32_t, std::uint32_t, std::uint64_t, std::string,
                                 std::vector<std::string>, BusVariant>;

inline constexpr Duration kLongestBusCall = std::chrono::seconds(1);
// For a question that nobody waits for and that is asked once: a service that has just started may be busy.
inline constexpr Duration kLongestPatientCall = std::chrono::minutes(1);

// A method call on the bus.
struct BusCall {
    std::string service;
    std::string path;
    std::string interface;
    std::string member;
    std::vector<BusArgument> arguments = {};
    bool startsService = false;  // whether the bus may start a service that is not running
    Duration timeout = kLongestBusCall;
};

// The call that reads a property; its answer's only argument is the value.
[[nodiscard]] BusCall propertyRead(std::string service, std::string path, std::string interface,
                                   std::string property);
// The call that reads all of an interface's; its answer's only argument is an array of (name, value).
[[nodiscard]] BusCall propertiesRead(std::string service, std::string path, std::string interface);

// Which signals are meant; an empty field stands for any value.
struct BusSignal {
    std::string sender = {};  // a name on the bus, of its owner when the signal comes
    std::string path = {};
    std::string interface = {};
    std::string member = {};
    std::string firstArgument = {};  // a text
};

// What a bus message carries: one element per argument. Variants are unwrapped, structures are arrays, a
// dictionary is an array of pairs, and a file descriptor is null.
using BusArguments = nlohmann::json;

// Where the user's session bus listens; empty when there is none. Only Unix sockets are taken, because other
// transports can start a program or wait for a name server.
[[nodiscard]] std::string sessionBusAddress();
// An address that is none, for bus libraries that would start a bus where none is named.
inline constexpr const char* kNoSessionBus = "disabled:";
// The same for these values of DBUS_SESSION_BUS_ADDRESS and XDG_RUNTIME_DIR (null when unset).
[[nodiscard]] std::string sessionBusAddress(const char* busAddress, const char* runtimeFolder);

// Where the system's bus listens, by the D-Bus Specification; empty when that is no Unix socket.
[[nodiscard]] std::string systemBusAddress();
// The same for this value of DBUS_SYSTEM_BUS_ADDRESS (null when unset).
[[nodiscard]] std::string systemBusAddress(const char* busAddress);

}  // namespace platform::freedesktop
