#include "platform/freedesktop/bus/BusService.h"

#include <algorithm>
#include <utility>

namespace platform::freedesktop {

namespace {

// The bus itself (D-Bus Specification, "Message Bus Messages").
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

}  // namespace

BusServiceWatch::BusServiceWatch(MessageBus& bus, std::string name, std::function<void(bool)> changed)
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

BusProperty::BusProperty(MessageBus& bus, BusPropertyName name, std::function<void()> changed)
    : bus_(bus),
      name_(std::move(name)),
      changed_(std::move(changed)),
      changes_(bus.subscribe({.sender = name_.service,
                              .path = name_.path,
                              .interface = "org.freedesktop.DBus.Properties",
                              .member = "PropertiesChanged",
                              .firstArgument = name_.interface},
                             [this](const auto& arguments) { handlePropertiesChanged(arguments); })),
      service_(bus, name_.service, [this](bool isRunning) {
          question_.cancel();
          if (isRunning)
              read();
          else
              set(nullptr);
      }) {}

void BusProperty::read() {
    auto call = propertyRead(name_.service, name_.path, name_.interface, name_.property);
    call.timeout = kLongestPatientCall;
    question_ = bus_.call(call, [this](const auto& answer) {
        set(answer && answer->size() == 1 ? answer->front() : nlohmann::json());
    });
}

// The arguments are the interface, pairs of a property and its value, and the properties of which only is
// said that they changed.
void BusProperty::handlePropertiesChanged(const BusArguments& arguments) {
    if (!isServiceRunning() || arguments.size() != 3) return;
    for (const auto& pair : arguments[1]) {
        if (!pair.is_array() || pair.size() != 2 || pair[0] != name_.property) continue;
        question_.cancel();
        set(pair[1]);
        return;
    }
    if (std::ranges::find(arguments[2], nlohmann::json(name_.property)) != arguments[2].end()) read();
}

void BusProperty::set(nlohmann::json value) {
    if (value_ == value) return;
    value_ = std::move(value);
    changed_();
}

}  // namespace platform::freedesktop
