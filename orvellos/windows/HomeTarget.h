#pragma once

#include <optional>
#include <string>

#include "orvellos/settings/AnchoredPosition.h"
#include "platform/Screens.h"

namespace orvellos {

// A screen as a tag is placed on it.
struct ScreenContext {
    platform::Rect anchorReferenceFrame;  // without panels
    platform::Rect clampFrame;            // the whole screen and 20 points more on every side

    explicit ScreenContext(const platform::Screen& screen)
        : anchorReferenceFrame(screen.visibleFrame), clampFrame(screen.frame.insetBy(-20)) {}
};

// The screen of the display with this uuid; absent while there is none.
[[nodiscard]] std::optional<platform::Screen> screenOfDisplay(const platform::Screens& screens,
                                                              const std::optional<std::string>& uuid);
// The screen that holds the point; absent when none does.
[[nodiscard]] std::optional<platform::Screen> screenUnder(const platform::Screens& screens,
                                                          platform::Point point);
// The origin that keeps a window of this size inside the area; one larger than the area starts at its
// minimum.
[[nodiscard]] platform::Point clampOrigin(platform::Point origin, platform::Size size,
                                          const platform::Rect& area);
// A window of this size centred on the anchored position, then clamped.
[[nodiscard]] platform::Rect anchoredFrame(platform::Size size, const AnchoredPosition& position,
                                           const ScreenContext& screen);
// A window of this size with the same centre as `frame`.
[[nodiscard]] platform::Rect detachedFrame(platform::Size size, const platform::Rect& frame);

}  // namespace orvellos
