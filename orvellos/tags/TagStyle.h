#pragma once

#include <optional>

#include "orvellos/base/Describe.h"
#include "platform/Geometry.h"
#include "platform/Screens.h"

namespace orvellos {

enum class TagShape { Tag, Pill };

template <>
struct RawValues<TagShape> {
    static constexpr std::array<std::pair<TagShape, std::string_view>, 2> cases = {
        {{TagShape::Tag, "tag"}, {TagShape::Pill, "pill"}}};
};

// The name shown to the user.
[[nodiscard]] std::string_view title(TagShape shape);

// The closed outline of a tag in a box of this size (points) with its origin at (0, 0): a capsule, or a
// luggage tag pointing left. Symmetric about half the height.
[[nodiscard]] platform::Path outlinePath(TagShape shape, double width, double height);

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

// The sizes that the user chooses among, from the smallest up.
inline constexpr std::array tagSizeLadder = {TagSize::ExtraSmall, TagSize::Small, TagSize::Medium,
                                             TagSize::Large, TagSize::ExtraLarge};

// The height in points of a drawn tag of this size on this main screen; a height of 900 is assumed without
// one.
[[nodiscard]] double baseHeight(TagSize size, const std::optional<platform::Screen>& mainScreen);

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
