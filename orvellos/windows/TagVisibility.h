#pragma once

#include <string_view>

#include "orvellos/settings/Settings.h"

namespace orvellos {

enum class TagVisibility { Show, Hide };

// What decides whether tags are seen, the same for all of them.
struct VisibilityInputs {
    TagVisibilityMode mode = TagVisibilityMode::AlwaysVisible;
    bool killSwitch = false;  // hidden for screen sharing, whatever else holds
    bool transientReveal = false;
    bool editing = false;
    bool missionControl = false;
    bool embiggen = false;
};

[[nodiscard]] constexpr TagVisibility decideVisibility(const VisibilityInputs& inputs) {
    if (inputs.killSwitch) return TagVisibility::Hide;
    if (inputs.embiggen || inputs.editing || inputs.transientReveal) return TagVisibility::Show;
    const bool hidden = inputs.mode == TagVisibilityMode::HiddenDuringWork && !inputs.missionControl;
    return hidden ? TagVisibility::Hide : TagVisibility::Show;
}

// Whether tags that are shown are seen through their Mission Control backups.
[[nodiscard]] constexpr bool showsBackups(const VisibilityInputs& inputs) {
    return inputs.missionControl || inputs.embiggen;
}

// Decides anew what is seen of each tag, and shows it.
class Reconciler {
  public:
    virtual ~Reconciler() = default;

    virtual void reconcile() = 0;
};

[[nodiscard]] constexpr std::string_view caseName(TagVisibility visibility) {
    return visibility == TagVisibility::Show ? "show" : "hide";
}

}  // namespace orvellos
