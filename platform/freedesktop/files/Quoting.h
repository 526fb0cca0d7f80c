#pragma once

#include <fmt/format.h>
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

// The text with every byte but ASCII letters, digits and "-_./" as % and two hexadecimal digits: what a
// file URI (RFC 3986) and a value in a D-Bus address may hold unescaped.
[[nodiscard]] inline std::string percentEncoded(std::string_view text) {
    static constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_./";
    std::string encoded;
    for (const char c : text) {
        if (kPlain.find(c) != std::string_view::npos)
            encoded += c;
        else
            encoded += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return encoded;
}

}  // namespace platform::freedesktop
