#pragma once

#include <optional>
#include <string_view>

#include "platform/RunLoop.h"
#include "platform/freedesktop/bus/BusMessage.h"

namespace platform::freedesktop {

// Asks a bus one question over a connection of its own and waits for the answer, until `deadline` (of the
// monotonic clock) at most. For a program that ends right after: a bus library takes longer to load than the
// question takes, and waits for the bus several times where this one says all it has to say at once. The
// call's arguments are texts. Absent when no Unix socket of the address list takes the connection, on an
// error, or when time is up.
[[nodiscard]] std::optional<BusArguments> askBus(std::string_view addresses, const BusCall& call,
                                                 Instant deadline);

}  // namespace platform::freedesktop
