#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/bus/SessionBus.h"

namespace platform::freedesktop {

// Follows whether a well-known name on a bus has an owner. As long as the bus has not said so, it has none.
class BusServiceWatch {
  public:
    // `changed` is called at a later turn of the main loop, whenever the answer is another; when one owner
    // takes over from another it is called twice. It never starts the service.
    BusServiceWatch(SessionBus& bus, std::string name, std::function<void(bool isRunning)> changed);
    BusServiceWatch(const BusServiceWatch&) = delete;
    BusServiceWatch& operator=(const BusServiceWatch&) = delete;

    [[nodiscard]] bool isRunning() const { return isRunning_; }

  private:
    void ask();
    void handleOwnerChanged(const BusArguments& arguments);
    void set(bool isRunning);

    SessionBus& bus_;
    std::string name_;
    std::function<void(bool)> changed_;
    bool isRunning_ = false;
    Subscription question_;
    Subscription ownerChanges_;
    Subscription connection_;
};

}  // namespace platform::freedesktop
