#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Observers.h"

namespace platform {

// The window server's number for a display.
struct DisplayId {
    std::uint32_t value = 0;
    auto operator<=>(const DisplayId&) const = default;
};

struct Screen {
    std::optional<DisplayId> displayId;
    Rect frame;
    Rect visibleFrame;              // without panels and docks
    double backingScaleFactor = 1;  // device pixels per point
    bool operator==(const Screen&) const = default;
};

// The first of the screens that the point is on; null when it is on none.
[[nodiscard]] inline const Screen* screenAt(std::span<const Screen> screens, Point point) {
    for (const auto& screen : screens)
        if (screen.frame.contains(point)) return &screen;
    return nullptr;
}

// The screens as they are now, and the mouse pointer on them. No call waits for the display server, but the
// pointer's.
class Screens {
  public:
    virtual ~Screens() = default;

    // In the system's order; empty when no screen is attached.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;
    [[nodiscard]] virtual DisplayId mainDisplayId() const = 0;
    // The display's lasting identity in textual form; absent for an unknown display.
    [[nodiscard]] virtual std::optional<std::string> displayUuid(DisplayId display) const = 0;
    // Delivered on the main queue, once for a burst of changes.
    virtual Subscription onParametersChanged(std::function<void()> action) = 0;
    // Where the mouse pointer is; the last known location when the display server does not answer in time.
    [[nodiscard]] virtual Point pointerLocation() const = 0;
};

}  // namespace platform
