#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/RunLoop.h"
#include "platform/freedesktop/BusMessage.h"
#include "platform/freedesktop/SessionBus.h"
#include "platform/freedesktop/SystemdLibrary.h"

namespace platform::freedesktop {

// The ids KWin gives its virtual desktops, in desktop order. They survive reordering, renaming and restarts.
using KwinDesktopIds = std::vector<std::string>;

// Asks KWin and waits for the answer, `timeout` at most from the connecting on. Absent when there is no bus
// at `address`, KWin is not on it or does not answer in time, or the answer is not a list of desktops.
[[nodiscard]] std::optional<KwinDesktopIds> readKwinDesktopIds(
    SystemdLibrary& library, Duration timeout, const std::string& address = sessionBusAddress());

// The same for the application, which must not wait.
class KwinDesktops {
  public:
    using Callback = std::function<void(const std::optional<KwinDesktopIds>& ids)>;

    explicit KwinDesktops(SessionBus& bus) : bus_(bus) {}

    // Delivers once, at a later turn of the main loop; absent as readKwinDesktopIds says, after a second.
    Subscription requestIds(Callback callback);

  private:
    SessionBus& bus_;
};

}  // namespace platform::freedesktop
