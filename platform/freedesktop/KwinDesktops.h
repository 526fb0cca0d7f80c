#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/RunLoop.h"
#include "platform/freedesktop/BusMessage.h"
#include "platform/freedesktop/SystemdLibrary.h"

namespace platform::freedesktop {

// The ids KWin gives its virtual desktops, in desktop order. They survive reordering, renaming and restarts.
using KwinDesktopIds = std::vector<std::string>;

// Asks KWin and waits for the answer, `timeout` at most from the connecting on. Absent when there is no bus
// at `address`, KWin is not on it or does not answer in time, or the answer is not a list of desktops.
[[nodiscard]] std::optional<KwinDesktopIds> readKwinDesktopIds(
    SystemdLibrary& library, Duration timeout, const std::string& address = sessionBusAddress());

}  // namespace platform::freedesktop
