#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "orvellos/base/Describe.h"
#include "platform/Geometry.h"

namespace orvellos {

enum class HEdge { Left, Right };
enum class VEdge { Top, Bottom };

template <>
struct RawValues<HEdge> {
    static constexpr std::array<std::pair<HEdge, std::string_view>, 2> cases = {
        {{HEdge::Left, "left"}, {HEdge::Right, "right"}}};
};
template <>
struct RawValues<VEdge> {
    static constexpr std::array<std::pair<VEdge, std::string_view>, 2> cases = {
        {{VEdge::Top, "top"}, {VEdge::Bottom, "bottom"}}};
};

// A place relative to the edges of a screen; offsets are points inward from the edge.
struct AnchoredPosition {
    HEdge hEdge = HEdge::Right;
    double hOffset = 0;
    VEdge vEdge = VEdge::Top;
    double vOffset = 0;
    bool operator==(const AnchoredPosition&) const = default;

    [[nodiscard]] platform::Point anchorPoint(const platform::Rect& rect) const;
};

// The inverse: the point relative to the edges it is nearest to. A point on a middle line belongs to the
// right or top.
[[nodiscard]] AnchoredPosition anchoredPositionFromPoint(platform::Point point, const platform::Rect& rect);

// The JSON object with the members "hEdge", "hOffset", "vEdge", "vOffset".
[[nodiscard]] nlohmann::json toJson(const AnchoredPosition& position);
// Absent unless all four members are there with their types; other members are ignored.
[[nodiscard]] std::optional<AnchoredPosition> anchoredPositionFromJson(const nlohmann::json& json);

}  // namespace orvellos
