#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Observers.h"

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

// Points, origin at the top left of the main display; a coordinate is absent when the list gives none.
struct OnScreenBounds {
    std::optional<double> x, y, width, height;
};

// One entry of the list of windows that are on the screen now; a field is absent when the list gives none.
struct OnScreenWindow {
    std::optional<std::string> ownerName;
    std::optional<std::int64_t> layer;
    std::optional<OnScreenBounds> bounds;
    std::optional<double> alpha;
    std::optional<std::string> name;
};

// The windows on the screen now, of which those owned by "Dock" tell whether Mission Control is open.
class OnScreenWindows {
  public:
    virtual ~OnScreenWindows() = default;

    // Front to back; absent when the list cannot be had. Asked many times a second, so it never waits.
    [[nodiscard]] virtual std::optional<std::vector<OnScreenWindow>> copyOnScreenWindows() const = 0;
    // Told after each change of the list. Inactive where nobody tells of them, so that the list has to be
    // looked at again and again.
    virtual Subscription onChanged(std::function<void()> action) = 0;
};

}  // namespace platform
