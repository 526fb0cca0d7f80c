#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvellos {

// The first `most` characters of a UTF-8 text as its reader counts them: extended grapheme clusters (UAX
// #29). A byte that is not UTF-8 is a character of its own. The parts point into `text`.
[[nodiscard]] std::vector<std::string_view> graphemeClusters(std::string_view text, std::size_t most);

}  // namespace orvellos
