#pragma once

#include <functional>

#include "platform/Identifiers.h"
#include "platform/Subscription.h"

namespace platform {

// The left and right mouse buttons that go down, without taking them from anybody. What the user does in a
// menu of the application is not told. Handlers run on the main thread; a subscription is inactive where
// buttons cannot be seen.
class MouseMonitor {
  public:
    virtual ~MouseMonitor() = default;

    // In the application's own windows.
    virtual Subscription addLocalMouseDownMonitor(std::function<void(WindowNumber window)> handler) = 0;
    // In those of other programs and of the desktop.
    virtual Subscription addGlobalMouseDownMonitor(std::function<void()> handler) = 0;
};

}  // namespace platform
