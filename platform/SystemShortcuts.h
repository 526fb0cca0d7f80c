#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/KeyMonitor.h"
#include "platform/Subscription.h"

namespace platform {

// The desktop's own keyboard shortcuts.
class SystemShortcuts {
  public:
    // The name by which the user knows what the keys do, empty where it has none; absent when no enabled
    // shortcut uses them or the desktop does not say.
    using Answer = std::function<void(const std::optional<std::string>& action)>;

    virtual ~SystemShortcuts() = default;

    // Answers once, at a later turn of the main loop and within about a second; never when the subscription
    // ends before.
    virtual Subscription findUse(const KeyEvent& keys, Answer answer) = 0;
};

}  // namespace platform
