#pragma once

#include <string_view>

namespace orvellos {

// The UTF-8 text without white space and line breaks (Unicode's separators and the control characters among
// them) at its ends. Bytes that are not UTF-8 are no white space.
[[nodiscard]] std::string_view trimmed(std::string_view text);

}  // namespace orvellos
