#include "orvellos/tags/Tag.h"

#include <uuid/uuid.h>

#include <algorithm>

namespace orvellos {

TagID TagID::random() {
    TagID id;
    uuid_generate_random(id.bytes_.data());
    return id;
}

std::optional<TagID> TagID::parse(std::string_view text) {
    TagID id;
    if (uuid_parse_range(text.data(), text.data() + text.size(), id.bytes_.data()) != 0) return std::nullopt;
    return id;
}

std::string TagID::text() const {
    std::array<char, UUID_STR_LEN> text{};
    uuid_unparse_upper(bytes_.data(), text.data());
    return text.data();
}

const Tag* tagWithID(std::span<const Tag> tags, const TagID& id) {
    const auto found = std::ranges::find(tags, id, &Tag::id);
    return found == tags.end() ? nullptr : &*found;
}

const Tag* firstTagOfSpace(std::span<const Tag> tags, const std::optional<std::string>& spaceUUID) {
    if (!spaceUUID) return nullptr;
    const auto found = std::ranges::find(tags, spaceUUID, &Tag::spaceUUID);
    return found == tags.end() ? nullptr : &*found;
}

}  // namespace orvellos
