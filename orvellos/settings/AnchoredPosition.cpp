#include "orvellos/settings/AnchoredPosition.h"

#include <nlohmann/json.hpp>

namespace orvellos {

namespace {

template <typename E>
std::optional<E> edge(const nlohmann::json& json, const char* key) {
    const auto member = json.find(key);
    if (member == json.end() || !member->is_string()) return std::nullopt;
    return fromRawValue<E>(member->get_ref<const std::string&>());
}

std::optional<double> offset(const nlohmann::json& json, const char* key) {
    const auto member = json.find(key);
    return member != json.end() && member->is_number() ? std::optional(member->get<double>()) : std::nullopt;
}

}  // namespace

platform::Point AnchoredPosition::anchorPoint(const platform::Rect& rect) const {
    return {hEdge == HEdge::Right ? rect.maxX() - hOffset : rect.minX() + hOffset,
            vEdge == VEdge::Bottom ? rect.minY() + vOffset : rect.maxY() - vOffset};
}

AnchoredPosition anchoredPositionFromPoint(platform::Point point, const platform::Rect& rect) {
    const bool left = point.x < rect.midX();
    const bool bottom = point.y < rect.midY();
    return {left ? HEdge::Left : HEdge::Right, left ? point.x - rect.minX() : rect.maxX() - point.x,
            bottom ? VEdge::Bottom : VEdge::Top, bottom ? point.y - rect.minY() : rect.maxY() - point.y};
}

nlohmann::json toJson(const AnchoredPosition& position) {
    return {{"hEdge", rawValue(position.hEdge)},
            {"hOffset", position.hOffset},
            {"vEdge", rawValue(position.vEdge)},
            {"vOffset", position.vOffset}};
}

std::optional<AnchoredPosition> anchoredPositionFromJson(const nlohmann::json& json) {
    if (!json.is_object()) return std::nullopt;
    const auto hEdge = edge<HEdge>(json, "hEdge");
    const auto vEdge = edge<VEdge>(json, "vEdge");
    const auto hOffset = offset(json, "hOffset");
    const auto vOffset = offset(json, "vOffset");
    if (!hEdge || !vEdge || !hOffset || !vOffset) return std::nullopt;
    return AnchoredPosition{*hEdge, *hOffset, *vEdge, *vOffset};
}

}  // namespace orvellos
