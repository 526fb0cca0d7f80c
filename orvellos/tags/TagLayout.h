#pragma once

#include <optional>
#include <string>

#include "orvellos/tags/TagStyle.h"
#include "platform/Windows.h"

namespace orvellos {

// The transparent margin around a drawn tag, room for its shadow, in points on every side.
inline constexpr double kTagMargin = 20;

// What decides how a tag window looks. All lengths are points.
struct TagAppearance {
    std::string label;
    platform::Color fill;
    platform::Color labelColor;
    TagShape shape = TagShape::Tag;
    // Set for a Mission Control backup; absent for a main window.
    std::optional<MissionControlStyle> backupStyle;
};

// The label as one line of bounded length: line breaks, tabs and other controls become spaces, and a text
// longer than 200 characters, or than 4 KiB, ends in an ellipsis.
[[nodiscard]] std::string displayedLabel(const std::string& label);

// The size of a window, margin included, for a tag of the height `baseHeight`.
[[nodiscard]] platform::Size tagWindowSize(const std::string& label, double baseHeight, TagShape shape,
                                           const platform::TextMeasurer& measurer);

// Lays the layers out in a window of this size.
[[nodiscard]] platform::TagLayers layOutTag(platform::Size window, const TagAppearance& appearance,
                                            const platform::TextMeasurer& measurer);

}  // namespace orvellos
