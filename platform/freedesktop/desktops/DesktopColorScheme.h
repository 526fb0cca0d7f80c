#pragma once

#include <functional>
#include <optional>

#include "platform/freedesktop/bus/BusService.h"
#include "platform/freedesktop/bus/MessageBus.h"

namespace platform::freedesktop {

// The user's choice between light and dark, as the desktop portal tells it (XDG Desktop Portal, Settings,
// "org.freedesktop.appearance" "color-scheme").
class DesktopColorScheme {
  public:
    enum class Preference { None, Dark, Light };

    // `changed` is called at a later turn of the main loop whenever the preference is another.
    DesktopColorScheme(MessageBus& bus, std::function<void(Preference)> changed);
    DesktopColorScheme(const DesktopColorScheme&) = delete;
    DesktopColorScheme& operator=(const DesktopColorScheme&) = delete;

  private:
    void ask();
    void set(const nlohmann::json& value);

    MessageBus& bus_;
    std::function<void(Preference)> changed_;
    Preference preference_ = Preference::None;
    Subscription question_;
    Subscription changes_;
    Subscription connection_;
};

}  // namespace platform::freedesktop
