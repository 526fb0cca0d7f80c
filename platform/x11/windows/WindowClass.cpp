#include "platform/x11/windows/WindowClass.h"

#include <cstddef>

namespace platform::x11 {

namespace {

// Whether the text is well-formed UTF-8, as far as its lead and continuation bytes tell.
bool looksLikeUtf8(std::string_view text) {
    std::size_t expected = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xC0) == 0x80;
        if (continues != (expected > 0)) return false;
        if (continues) {
            --expected;
        } else if (byte >= 0x80) {
            if (byte < 0xC2 || byte > 0xF4) return false;
            expected = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
        }
    }
    return expected == 0;
}

std::string fromLatin1(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | (byte >> 6));
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

}  // namespace

std::optional<std::string> classPart(std::string_view property) {
    const auto end = property.find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    auto name = property.substr(end + 1);
    name = name.substr(0, name.find('\0'));
    if (name.empty()) return std::nullopt;
    return looksLikeUtf8(name) ? std::string(name) : fromLatin1(name);
}

}  // namespace platform::x11
