#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvellos {

// The part of a stored tag that the command line reads.
struct MiniTag {
    std::string label;
    std::optional<std::string> spaceUUID;
    bool operator==(const MiniTag&) const = default;
};

// The tags of a tag file's text in file order; absent when any element is no tag.
[[nodiscard]] std::optional<std::vector<MiniTag>> decodeMiniTags(std::string_view json);

// Which label each Space has, made from the text of a tag file.
class TagLabels {
  public:
    // Of several tags of one Space the last counts. A text that does not decode gives no labels.
    explicit TagLabels(std::string_view json);

    [[nodiscard]] std::optional<std::string> labelOf(std::string_view spaceUUID) const;
    // The Space of the first tag in file order whose label goes with the query (see LabelMatcher).
    [[nodiscard]] std::optional<std::string> spaceMatching(std::string_view query) const;

  private:
    struct Entry {
        std::string spaceUUID;
        std::string label;
    };
    std::vector<Entry> entries_;  // each Space once, where the file first names it
};

}  // namespace orvellos
