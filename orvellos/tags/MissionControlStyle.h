#pragma once

#include "orvellos/base/RawValues.h"

namespace orvellos {

// How a tag appears in the desktop's overview.
enum class MissionControlStyle { Pill, Fullscreen, HeaderBar };

template <>
struct RawValues<MissionControlStyle> {
    static constexpr std::array<std::pair<MissionControlStyle, std::string_view>, 3> cases = {
        {{MissionControlStyle::Pill, "pill"},
         {MissionControlStyle::Fullscreen, "fullscreen"},
         {MissionControlStyle::HeaderBar, "headerBar"}}};
};

// The name shown to the user.
[[nodiscard]] constexpr std::string_view title(MissionControlStyle style) {
    if (style == MissionControlStyle::Pill) return "Pill";
    return style == MissionControlStyle::Fullscreen ? "Full" : "Bar";
}

}  // namespace orvellos
