#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/Geometry.h"

namespace orvellos {

// The identity of a tag: a UUID (RFC 4122).
class TagID {
  public:
    [[nodiscard]] static TagID random();
    // From the canonical 8-4-4-4-12 hexadecimal form in either case; absent for any other text.
    [[nodiscard]] static std::optional<TagID> parse(std::string_view text);

    // The canonical form in upper case.
    [[nodiscard]] std::string text() const;
    auto operator<=>(const TagID&) const = default;

  private:
    std::array<std::uint8_t, 16> bytes_{};
};

// One label bound to one Space.
struct Tag {
    TagID id;
    std::string label;
    std::string colorHex;  // "#RRGGBB"; any text is kept
    std::optional<platform::Rect>
        frame;  // where the user put the window; absent for a tag at the shared position
    std::optional<std::string> spaceUUID;
    bool operator==(const Tag&) const = default;
};

// The first tag with that id; null without one.
[[nodiscard]] const Tag* tagWithID(std::span<const Tag> tags, const TagID& id);
// The first tag of that Space; null without one, or without a Space.
[[nodiscard]] const Tag* firstTagOfSpace(std::span<const Tag> tags,
                                         const std::optional<std::string>& spaceUUID);

}  // namespace orvellos
