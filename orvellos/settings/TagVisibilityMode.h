#pragma once

#include "orvellos/base/RawValues.h"

namespace orvellos {

// Whether tags stay visible or hide while the user works.
enum class TagVisibilityMode { AlwaysVisible, HiddenDuringWork };

template <>
struct RawValues<TagVisibilityMode> {
    static constexpr std::array<std::pair<TagVisibilityMode, std::string_view>, 2> cases = {
        {{TagVisibilityMode::AlwaysVisible, "alwaysVisible"},
         {TagVisibilityMode::HiddenDuringWork, "hiddenDuringWork"}}};
};

// The name shown to the user.
[[nodiscard]] constexpr std::string_view title(TagVisibilityMode mode) {
    return mode == TagVisibilityMode::HiddenDuringWork ? "Hidden during normal work" : "Always visible";
}

}  // namespace orvellos
