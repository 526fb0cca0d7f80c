#pragma once

#include <functional>
#include <optional>

#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/desktops/KwinDesktopRow.h"

namespace platform::freedesktop {

// Asks KWin for its desktops without waiting, for the application.
class KwinDesktops {
  public:
    using Callback = std::function<void(const std::optional<DesktopRow>& row)>;

    explicit KwinDesktops(MessageBus& bus) : bus_(bus) {}

    // Delivers once, at a later turn of the main loop; absent as readKwinDesktops says, after a second.
    Subscription request(Callback callback);

  private:
    MessageBus& bus_;
};

}  // namespace platform::freedesktop
