#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace orvellos {

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
