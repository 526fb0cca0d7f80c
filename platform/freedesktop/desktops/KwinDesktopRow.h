#pragma once

#include <optional>
#include <string>

#include "platform/RunLoop.h"
#include "platform/freedesktop/bus/BusMessage.h"
#include "platform/linux/DesktopRow.h"

namespace platform::freedesktop {

// The question for KWin's virtual desktops, whose ids survive reordering, renaming and restarts.
[[nodiscard]] BusCall kwinDesktopsCall();
// What its answer says; absent when that has no list of desktops.
[[nodiscard]] std::optional<DesktopRow> kwinDesktopRow(const BusArguments& answer);

// Asks KWin and waits for the answer, `timeout` at most from the connecting on. Absent when there is no bus
// at `address`, KWin is not on it or does not answer in time, or the answer has no list of desktops. For the
// command line, which is linked without a bus library.
[[nodiscard]] std::optional<DesktopRow> readKwinDesktops(Duration timeout,
                                                         const std::string& address = sessionBusAddress());

}  // namespace platform::freedesktop
