#pragma once

#include <span>
#include <string>

namespace platform::freedesktop {

// Starts a program, found through PATH unless it names a folder, that lives on by itself: in a session of its
// own, with /dev/null for standard input and output, and no child of ours to wait for. False when it could
// not be started.
[[nodiscard]] bool startDetached(const std::string& program, std::span<const std::string> arguments);

}  // namespace platform::freedesktop
