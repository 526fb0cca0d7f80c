#pragma once

#include <string>
#include <string_view>

namespace orvellos {

// The label as one line of at most `most` characters: line breaks, tabs and other control characters are
// spaces, and what is too long ends in "…".
[[nodiscard]] std::string shortLabel(std::string_view label, std::size_t most = 60);
// The same between typographic double quotes, as sentences name a tag.
[[nodiscard]] std::string quotedLabel(std::string_view label);

}  // namespace orvellos
