#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace orvellos {

// JSON text (UTF-8) as the command line prints and the tag file keeps it: two-space indentation, one member
// per line, members sorted by key, a space on both sides of each colon, and a slash inside a string written
// as \/. Numbers take their shortest exact form. Bytes of a string that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string prettyJson(const nlohmann::json& value);

}  // namespace orvellos
