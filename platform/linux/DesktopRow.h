#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// A window manager that tells of more desktops does not tell the truth.
inline constexpr std::uint32_t kMostDesktops = 512;

// The desktops of a window manager that gives them lasting ids, by its own word.
struct DesktopRow {
    std::vector<std::string> ids;               // in the order of the desktops' numbers
    std::optional<std::uint32_t> current = {};  // the number of the one that is shown, counted from 0

    friend bool operator==(const DesktopRow&, const DesktopRow&) = default;
};

}  // namespace platform
