#pragma once

#include <optional>
#include <string>

#include "platform/freedesktop/bus/BusMessage.h"
#include "platform/linux/OverviewSource.h"

namespace platform::freedesktop {

// An overview that belongs to a desktop on the session bus.
class BusOverview : public OverviewSource {
  public:
    // The desktop's, for people to read.
    [[nodiscard]] virtual std::string name() const = 0;
    // The call that opens it; absent while there is no such desktop.
    [[nodiscard]] virtual std::optional<BusCall> openingCall() const = 0;
};

}  // namespace platform::freedesktop
