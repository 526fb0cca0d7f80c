#include "orvellos/TagJson.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "orvellos/PrettyJson.h"
#include "platform/JsonText.h"

namespace orvellos {

namespace {

using nlohmann::json;
using platform::Rect;

// The named member; null when it is missing or a JSON null.
json* memberOf(json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || found->is_null() ? nullptr : &*found;
}

bool takeString(json* value, std::string& into) {
    if (!value || !value->is_string()) return false;
    into = std::move(value->get_ref<std::string&>());
    return true;
}

bool isPairOfNumbers(const json& value) {
    return value.is_array() && value.size() == 2 && value[0].is_number() && value[1].is_number();
}

bool takeFrame(const json& value, std::optional<Rect>& into) {
    if (!value.is_array() || value.size() != 2 || !isPairOfNumbers(value[0]) || !isPairOfNumbers(value[1]))
        return false;
    into = Rect{value[0][0].get<double>(), value[0][1].get<double>(), value[1][0].get<double>(),
                value[1][1].get<double>()};
    return true;
}

bool isFinite(const Rect& rect) {
    return std::isfinite(rect.x) && std::isfinite(rect.y) && std::isfinite(rect.width) &&
           std::isfinite(rect.height);
}

// Moves the strings out of the parsed value.
std::optional<Tag> takeTag(json& value) {
    if (!value.is_object()) return std::nullopt;
    Tag tag;
    std::string id;
    const bool whole = takeString(memberOf(value, "id"), id) &&
                       takeString(memberOf(value, "label"), tag.label) &&
                       takeString(memberOf(value, "colorHex"), tag.colorHex);
    const auto parsedId = TagID::parse(id);
    if (!whole || !parsedId) return std::nullopt;
    tag.id = *parsedId;
    if (const auto* frame = memberOf(value, "frame"); frame && !takeFrame(*frame, tag.frame))
        return std::nullopt;
    if (auto* space = memberOf(value, "spaceUUID"); space && !takeString(space, tag.spaceUUID.emplace()))
        return std::nullopt;
    return tag;
}

json toJson(const Tag& tag) {
    json value = {{"id", tag.id.text()}, {"label", tag.label}, {"colorHex", tag.colorHex}};
    if (tag.frame) value["frame"] = {{tag.frame->x, tag.frame->y}, {tag.frame->width, tag.frame->height}};
    if (tag.spaceUUID) value["spaceUUID"] = *tag.spaceUUID;
    return value;
}

}  // namespace

platform::Result<std::string> encodeTags(const std::vector<Tag>& tags) {
    json array = json::array();
    for (const auto& tag : tags) {
        if (tag.frame && !isFinite(*tag.frame))
            return platform::Error{"encode: The frame of tag " + tag.id.text() + " is not finite"};
        array.push_back(toJson(tag));
    }
    return prettyJson(array);
}

std::optional<std::vector<Tag>> decodeTags(std::string_view text) {
    auto array = platform::parseJson(text);
    if (!array || !array->is_array()) return std::nullopt;
    std::vector<Tag> tags;
    tags.reserve(array->size());
    for (auto& element : *array) {
        auto tag = takeTag(element);
        if (!tag) return std::nullopt;
        tags.push_back(std::move(*tag));
    }
    return tags;
}

}  // namespace orvellos
