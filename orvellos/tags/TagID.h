#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

}  // namespace orvellos
