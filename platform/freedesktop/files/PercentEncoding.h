#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace platform::freedesktop {

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
