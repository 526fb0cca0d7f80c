#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvellos {

// The first `most` characters of a UTF-8 text as its reader counts them: extended grapheme clusters (UAX
// #29). A byte that is not UTF-8 is a character of its own. The parts point into `text`.
[[nodiscard]] std::vector<std::string_view> graphemeClusters(std::string_view text, std::size_t most);

// The text in lower case, letter by letter, in NFC. Bytes that are not UTF-8 give an empty text.
[[nodiscard]] std::string lowerCased(std::string_view text);

// The UTF-8 text without white space and line breaks (Unicode's separators and the control characters among
// them) at its ends. Bytes that are not UTF-8 are no white space.
[[nodiscard]] std::string_view trimmed(std::string_view text);

}  // namespace orvellos
