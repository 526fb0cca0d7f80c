#pragma once

#include <string>
#include <string_view>

namespace orvellos {

// The text in lower case, letter by letter, in NFC. Bytes that are not UTF-8 give an empty text.
[[nodiscard]] std::string lowerCased(std::string_view text);

}  // namespace orvellos
