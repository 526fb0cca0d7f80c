#pragma once

#include <string>
#include <string_view>

namespace platform::freedesktop {

// The word at the start of the text as a shell would read it, without its quotes: in double quotes a
// backslash takes the next character as it is, in single quotes nothing does. A word without quotes is the
// whole text.
[[nodiscard]] inline std::string unquoted(std::string_view text) {
    const char quote = text.starts_with('"') || text.starts_with('\'') ? text[0] : '\0';
    std::string word;
    for (std::size_t i = quote ? 1 : 0; i < text.size() && text[i] != quote; ++i) {
        if (text[i] == '\\' && quote != '\'' && i + 1 < text.size()) ++i;
        word += text[i];
    }
    return word;
}

}  // namespace platform::freedesktop
