#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

namespace platform {

inline constexpr std::size_t kDeepestJson = 64;

// Whether arrays and objects nest deeper than `limit` anywhere in the text. Reads brackets outside strings
// only, so that a text is judged before a parser spends stack or memory on it.
[[nodiscard]] inline bool jsonNestsDeeperThan(std::string_view text, std::size_t limit) {
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            if (c == '"') inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > limit) return true;
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return false;
}

// Parses untrusted JSON text (RFC 8259). Absent when it is not JSON, not UTF-8, holds a number outside the
// range of a double, or nests deeper than kDeepestJson.
[[nodiscard]] inline std::optional<nlohmann::json> parseJson(std::string_view text) {
    if (jsonNestsDeeperThan(text, kDeepestJson)) return std::nullopt;
    auto value = nlohmann::json::parse(text, nullptr, false);
    if (value.is_discarded()) return std::nullopt;
    return value;
}

}  // namespace platform
