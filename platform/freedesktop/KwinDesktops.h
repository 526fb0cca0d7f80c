#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/DesktopRow.h"
#include "platform/RunLoop.h"
#include "platform/freedesktop/BusMessage.h"
#include "platform/freedesktop/SessionBus.h"
#include "platform/freedesktop/SystemdLibrary.h"

namespace platform::freedesktop {

// Asks KWin for its virtual desktops, whose ids survive reordering, renaming and restarts, and waits for the
// answer, `timeout` at most from the connecting on. Absent when there is no bus at `address`, KWin is not on
// it or does not answer in time, or the answer has no list of desktops.
[[nodiscard]] std::optional<DesktopRow> readKwinDesktops(SystemdLibrary& library, Duration timeout,
                                                         const std::string& address = sessionBusAddress());

// The same for the application, which must not wait.
class KwinDesktops {
  public:
    using Callback = std::function<void(const std::optional<DesktopRow>& row)>;

    explicit KwinDesktops(SessionBus& bus) : bus_(bus) {}

    // Delivers once, at a later turn of the main loop; absent as readKwinDesktops says, after a second.
    Subscription request(Callback callback);

  private:
    SessionBus& bus_;
};

}  // namespace platform::freedesktop
