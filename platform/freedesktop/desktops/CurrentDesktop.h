#pragma once

#include <string>
#include <string_view>

namespace platform::freedesktop {

// The running desktop's names, separated by colons, from XDG_CURRENT_DESKTOP (Desktop Entry Specification);
// empty when it is not set.
[[nodiscard]] std::string currentDesktops();
// Whether a name is among them.
[[nodiscard]] bool isAmongDesktops(std::string_view name, std::string_view desktops);

}  // namespace platform::freedesktop
