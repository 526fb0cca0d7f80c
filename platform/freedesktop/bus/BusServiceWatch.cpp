#include "platform/freedesktop/bus/BusServiceWatch.h"

#include <utility>

namespace platform::freedesktop {

namespace {

// The bus itself (D-Bus Specification, "Message Bus Messages").
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

}  // namespace

BusServiceWatch::BusServiceWatch(SessionBus& bus, std::string name, std::function<void(bool)> changed)
    : bus_(bus), name_(std::move(name)), changed_(std::move(changed)) {
    ownerChanges_ = bus_.subscribe({.sender = kBus,
                                    .path = kBusPath,
                                    .interface = kBus,
                                    .member = "NameOwnerChanged",
                                    .firstArgument = name_},
                                   [this](const auto& arguments) { handleOwnerChanged(arguments); });
    connection_ = bus_.onConnectionChanged([this](bool connected) {
        if (connected)
            ask();
        else
            set(false);
    });
}

void BusServiceWatch::ask() {
    question_ = bus_.call({.service = kBus,
                           .path = kBusPath,
                           .interface = kBus,
                           .member = "NameHasOwner",
                           .arguments = {name_},
                           .timeout = kLongestPatientCall},
                          [this](const auto& answer) {
                              if (answer && answer->size() == 1 && answer->front().is_boolean())
                                  set(answer->front());
                          });
}

// The arguments are the name, the old and the new owner; an owner is empty when there is none.
void BusServiceWatch::handleOwnerChanged(const BusArguments& arguments) {
    if (arguments.size() != 3 || !arguments[2].is_string()) return;
    const bool hasOwner = !arguments[2].get_ref<const std::string&>().empty();
    if (hasOwner) set(false);
    set(hasOwner);
}

void BusServiceWatch::set(bool isRunning) {
    if (std::exchange(isRunning_, isRunning) != isRunning) changed_(isRunning);
}

}  // namespace platform::freedesktop
