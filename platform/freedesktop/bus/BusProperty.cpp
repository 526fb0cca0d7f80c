#include "platform/freedesktop/bus/BusProperty.h"

#include <algorithm>
#include <utility>

namespace platform::freedesktop {

BusProperty::BusProperty(SessionBus& bus, BusPropertyName name, std::function<void()> changed)
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
