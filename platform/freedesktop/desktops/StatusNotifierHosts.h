#pragma once

#include <functional>
#include <vector>

#include "platform/freedesktop/bus/BusService.h"

namespace platform::freedesktop {

// Whether somebody on the session bus shows status notifier items (freedesktop.org's StatusNotifierItem
// specification): there is a watcher, and it knows of a host.
class StatusNotifierHosts {
  public:
    // `changed` is called at a later turn of the main loop.
    StatusNotifierHosts(MessageBus& bus, std::function<void(bool isThere)> changed);

    [[nodiscard]] bool isThere() const { return registered_.value() == true; }

  private:
    BusProperty registered_;
    std::vector<Subscription> signals_;
};

}  // namespace platform::freedesktop
