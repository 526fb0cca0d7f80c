#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/bus/MessageBus.h"

namespace platform::freedesktop {

// Follows whether a well-known name on a bus has an owner. As long as the bus has not said so, it has none.
class BusServiceWatch {
  public:
    // `changed` is called at a later turn of the main loop, whenever the answer is another; when one owner
    // takes over from another it is called twice. It never starts the service.
    BusServiceWatch(MessageBus& bus, std::string name, std::function<void(bool isRunning)> changed);
    BusServiceWatch(const BusServiceWatch&) = delete;
    BusServiceWatch& operator=(const BusServiceWatch&) = delete;

    [[nodiscard]] bool isRunning() const { return isRunning_; }

  private:
    void ask();
    void handleOwnerChanged(const BusArguments& arguments);
    void set(bool isRunning);

    MessageBus& bus_;
    std::string name_;
    std::function<void(bool)> changed_;
    bool isRunning_ = false;
    Subscription question_;
    Subscription ownerChanges_;
    Subscription connection_;
};

// Where a property is on a bus.
struct BusPropertyName {
    std::string service;
    std::string path;
    std::string interface;
    std::string property;
};

// Follows a property whose service announces its changes (PropertiesChanged), and reads it whenever the
// service appears.
class BusProperty {
  public:
    // `changed` is called at a later turn of the main loop whenever the value is another.
    BusProperty(MessageBus& bus, BusPropertyName name, std::function<void()> changed);
    BusProperty(const BusProperty&) = delete;
    BusProperty& operator=(const BusProperty&) = delete;

    // Null while it is not known, as when the service is not running.
    [[nodiscard]] const nlohmann::json& value() const { return value_; }
    [[nodiscard]] bool isServiceRunning() const { return service_.isRunning(); }
    // Asks for the value anew, for a service that tells of changes in another way.
    void read();

  private:
    void handlePropertiesChanged(const BusArguments& arguments);
    void set(nlohmann::json value);

    MessageBus& bus_;
    BusPropertyName name_;
    std::function<void()> changed_;
    nlohmann::json value_;
    Subscription question_;
    Subscription changes_;
    BusServiceWatch service_;
};

}  // namespace platform::freedesktop
