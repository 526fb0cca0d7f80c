#pragma once

#include <functional>
#include <optional>

#include "platform/Observers.h"
#include "platform/Result.h"

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

// Whether this application starts when the user logs in.
class LoginItem {
  public:
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual bool isEnabled() const = 0;
    [[nodiscard]] virtual MaybeError enable() = 0;
    [[nodiscard]] virtual MaybeError disable() = 0;
};

// What the user has allowed the application to do with their system.
class Permissions {
  public:
    virtual ~Permissions() = default;
    // Whether keys may be put into the system, which switching Spaces takes.
    [[nodiscard]] virtual bool isAccessibilityTrusted() const = 0;
    // Whether keys that are pressed in other programs may be seen.
    [[nodiscard]] virtual bool isInputMonitoringTrusted() const = 0;

    // The system's own ways of asking the user for what is missing. Both return at once; whatever the user
    // answers shows above.
    virtual void promptAccessibility() = 0;
    virtual void requestInputMonitoring() = 0;
};

}  // namespace platform
