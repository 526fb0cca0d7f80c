#pragma once

#include <functional>
#include <optional>

#include "platform/Subscription.h"

namespace platform {

enum class SessionEvent {
    SessionDidResignActive,  // another user's session came to the front
    SessionDidBecomeActive,
    ScreensDidSleep,
    ScreensDidWake,
    WillSleep,  // the machine
    DidWake
};

// What becomes of the login session and of the power of machine and screens.
class SessionMonitor {
  public:
    virtual ~SessionMonitor() = default;

    // Delivered on the main queue.
    virtual Subscription onEvent(std::function<void(SessionEvent)> action) = 0;
    // Whether the session is the one at the screens; absent when nothing tells.
    [[nodiscard]] virtual std::optional<bool> isOnConsole() const = 0;
};

}  // namespace platform
