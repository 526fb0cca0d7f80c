#include "orvellos/commandline/TagLabels.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "orvellos/tags/Labels.h"
#include "platform/JsonText.h"

namespace orvellos {

namespace {

std::optional<MiniTag> decodeMiniTag(const nlohmann::json& element) {
    if (!element.is_object()) return std::nullopt;
    const auto label = element.find("label");
    if (label == element.end() || !label->is_string()) return std::nullopt;
    MiniTag tag{label->get<std::string>(), std::nullopt};
    const auto space = element.find("spaceUUID");
    if (space == element.end() || space->is_null()) return tag;
    if (!space->is_string()) return std::nullopt;
    tag.spaceUUID = space->get<std::string>();
    return tag;
}

}  // namespace

std::optional<std::vector<MiniTag>> decodeMiniTags(std::string_view json) {
    const auto array = platform::parseJson(json);
    if (!array || !array->is_array()) return std::nullopt;
    std::vector<MiniTag> tags;
    tags.reserve(array->size());
    for (const auto& element : *array) {
        auto tag = decodeMiniTag(element);
        if (!tag) return std::nullopt;
        tags.push_back(std::move(*tag));
    }
    return tags;
}

TagLabels::TagLabels(std::string_view json) {
    const auto tags = decodeMiniTags(json);
    if (!tags) return;
    std::unordered_map<std::string, std::size_t> indices;
    for (const auto& tag : *tags) {
        if (!tag.spaceUUID) continue;
        const auto [known, isNew] = indices.emplace(*tag.spaceUUID, entries_.size());
        if (isNew) {
            entries_.push_back({*tag.spaceUUID, tag.label});
        } else {
            entries_[known->second].label = tag.label;
        }
    }
}

std::optional<std::string> TagLabels::labelOf(std::string_view spaceUUID) const {
    const auto found = std::ranges::find(entries_, spaceUUID, &Entry::spaceUUID);
    return found == entries_.end() ? std::nullopt : std::optional(found->label);
}

std::optional<std::string> TagLabels::spaceMatching(std::string_view query) const {
    const LabelMatcher matcher(query);
    if (matcher.isEmpty()) return std::nullopt;
    const auto found =
        std::ranges::find_if(entries_, [&](const Entry& entry) { return matcher.matches(entry.label); });
    return found == entries_.end() ? std::nullopt : std::optional(found->spaceUUID);
}

}  // namespace orvellos
