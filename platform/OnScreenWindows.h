#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Subscription.h"

namespace platform {

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
