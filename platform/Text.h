#pragma once

#include <utf8proc.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace platform {

// The parts of a text between separators, empty ones included: one more than there are separators. They
// point into `text`.
[[nodiscard]] inline std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

// Whether two texts differ in nothing but the case of ASCII letters, in every locale.
[[nodiscard]] inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

[[nodiscard]] inline bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        utf8proc_int32_t character = 0;
        const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                             static_cast<utf8proc_ssize_t>(text.size()), &character);
        if (length <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(length));
    }
    return true;
}

}  // namespace platform
