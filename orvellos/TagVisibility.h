#pragma once

#include <string_view>

#include "orvellos/TagVisibilityMode.h"

namespace orvellos {

enum class TagVisibility { Show, Hide };

// What decides whether tags are seen, the same for all of them.
struct VisibilityInputs {
    TagVisibilityMode mode = TagVisibilityMode::AlwaysVisible;
    bool killSwitch = false;  // hidden for screen sharing, whatever else holds
    bool embiggen = false;
    bool editing = false;
};

[[nodiscard]] constexpr TagVisibility decideVisibility(const VisibilityInputs& inputs) {
    if (inputs.killSwitch) return TagVisibility::Hide;
    if (inputs.embiggen || inputs.editing) return TagVisibility::Show;
    return inputs.mode == TagVisibilityMode::HiddenDuringWork ? TagVisibility::Hide : TagVisibility::Show;
}

[[nodiscard]] constexpr std::string_view caseName(TagVisibility visibility) {
    return visibility == TagVisibility::Show ? "show" : "hide";
}

}  // namespace orvellos
