#pragma once

#include <fmt/format.h>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Geometry.h"

namespace orvellos {

// Geometry as log lines show it.
[[nodiscard]] inline std::string describe(const platform::Point& point) {
    return fmt::format("({:.1f}, {:.1f})", point.x, point.y);
}
[[nodiscard]] inline std::string describe(const platform::Rect& rect) {
    return fmt::format("({:.1f}, {:.1f}, {:.1f}, {:.1f})", rect.x, rect.y, rect.width, rect.height);
}

// An enumeration's cases in their order, each with the raw string it is stored as. Specialised beside each
// enumeration: `static constexpr std::array<std::pair<E, std::string_view>, N> cases`.
template <typename E>
struct RawValues;

// The string a case is stored as.
template <typename E>
[[nodiscard]] constexpr std::string_view rawValue(E value) {
    for (const auto& [one, raw] : RawValues<E>::cases)
        if (one == value) return raw;
    return {};
}

// The case stored as exactly this string; absent for any other.
template <typename E>
[[nodiscard]] constexpr std::optional<E> fromRawValue(std::string_view raw) {
    for (const auto& [one, text] : RawValues<E>::cases)
        if (text == raw) return one;
    return std::nullopt;
}

}  // namespace orvellos
