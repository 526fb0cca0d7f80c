#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvellos {

// The label as one line of at most `most` characters: line breaks, tabs and other control characters are
// spaces, and a longer text ends in "…".
[[nodiscard]] std::string shortLabel(std::string_view label, std::size_t most = 60);
// The same between typographic double quotes, as sentences name a tag.
[[nodiscard]] std::string quotedLabel(std::string_view label);

// Compares labels by their letters and numbers alone: case, spaces, punctuation, symbols and emoji do not
// count, nor does the way a letter is composed (canonical equivalence).
class LabelMatcher {
  public:
    // A text as its grapheme clusters (UAX #29), lower-cased, in NFC, without the clusters that do not start
    // with a letter or a number. Bytes that are not UTF-8 are passed over.
    using Normalized = std::vector<std::string>;
    [[nodiscard]] static Normalized normalize(std::string_view text);

    explicit LabelMatcher(std::string_view query) : query_(normalize(query)) {}

    // A query without letters and numbers matches nothing.
    [[nodiscard]] bool isEmpty() const { return query_.empty(); }
    // Whether the label equals the query, contains it or is contained in it, by whole clusters.
    [[nodiscard]] bool matches(std::string_view label) const;

  private:
    Normalized query_;
};

}  // namespace orvellos
