#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/tags/Tag.h"
#include "platform/Result.h"

namespace orvellos {

// The text of a tag file: a JSON array of tag objects, pretty-printed with sorted members. Fails when a frame
// holds a number that JSON cannot express (RFC 8259: no infinity, no NaN).
[[nodiscard]] platform::Result<std::string> encodeTags(const std::vector<Tag>& tags);

// The tags of a tag file. Absent when the text is not a JSON array of whole tags: "id" (a UUID), "label" and
// "colorHex" must be there, "frame" ([[x, y], [width, height]]) and "spaceUUID" may be missing or null; other
// members are ignored.
[[nodiscard]] std::optional<std::vector<Tag>> decodeTags(std::string_view text);

}  // namespace orvellos
