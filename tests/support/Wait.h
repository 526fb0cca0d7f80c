#pragma once

#include <chrono>
#include <functional>

namespace desktop_test {

// Long enough for a busy machine; a state that holds is seen at once, so only a failing test waits this long.
inline constexpr std::chrono::milliseconds kGenerousDeadline = std::chrono::seconds(30);

// Asks `holds` every few milliseconds until it says true. False when it still does not at the deadline.
[[nodiscard]] bool waitUntil(const std::function<bool()>& holds,
                             std::chrono::milliseconds deadline = kGenerousDeadline);

}  // namespace desktop_test
