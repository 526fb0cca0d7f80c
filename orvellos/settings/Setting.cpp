#include "orvellos/settings/Setting.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "platform/JsonText.h"

namespace orvellos {

std::optional<platform::DefaultsValue> DefaultsCoding<AnchoredPosition>::encode(
    const AnchoredPosition& position) {
    if (!std::isfinite(position.hOffset) || !std::isfinite(position.vOffset)) return std::nullopt;
    return platform::DefaultsData{toJson(position).dump()};
}

std::optional<AnchoredPosition> DefaultsCoding<AnchoredPosition>::decode(
    const platform::DefaultsValue& stored) {
    const auto* data = std::get_if<platform::DefaultsData>(&stored);
    if (!data) return std::nullopt;
    const auto json = platform::parseJson(data->bytes);
    return json ? anchoredPositionFromJson(*json) : std::nullopt;
}

}  // namespace orvellos
