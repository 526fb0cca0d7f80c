#pragma once

#include "orvellos/base/RawValues.h"
#include "platform/Geometry.h"

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

}  // namespace orvellos
