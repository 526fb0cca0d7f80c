#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

// One window of the window server's list; a field is absent when the list gives none.
struct WindowInfo {
    std::optional<std::int64_t> layer;  // 0 for ordinary windows, above 0 for what floats over them
    std::optional<std::int64_t> number;
    std::optional<std::int64_t> ownerPid;
    std::optional<std::string> ownerName;
    std::optional<Rect> bounds;  // frame included; origin at the TOP left of the main display, y downward
    double alpha = 1;
    bool operator==(const WindowInfo&) const = default;
};

// The windows of all programs.
class WindowList {
  public:
    virtual ~WindowList() = default;

    // The windows of every Space without the desktop's own elements, front to back; absent when there is no
    // answer.
    [[nodiscard]] virtual std::optional<std::vector<WindowInfo>> copyWindowsExcludingDesktopElements()
        const = 0;
};

}  // namespace platform
