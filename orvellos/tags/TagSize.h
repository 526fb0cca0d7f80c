#pragma once

#include <optional>

#include "orvellos/base/RawValues.h"
#include "platform/Screens.h"

namespace orvellos {

enum class TagSize { ExtraSmall, Small, Medium, Large, ExtraLarge, MissionControl };

template <>
struct RawValues<TagSize> {
    static constexpr std::array<std::pair<TagSize, std::string_view>, 6> cases = {
        {{TagSize::ExtraSmall, "extraSmall"},
         {TagSize::Small, "small"},
         {TagSize::Medium, "medium"},
         {TagSize::Large, "large"},
         {TagSize::ExtraLarge, "extraLarge"},
         {TagSize::MissionControl, "missionControl"}}};
};

// The height in points of a drawn tag of this size on this main screen; a height of 900 is assumed without
// one.
[[nodiscard]] double baseHeight(TagSize size, const std::optional<platform::Screen>& mainScreen);

}  // namespace orvellos
