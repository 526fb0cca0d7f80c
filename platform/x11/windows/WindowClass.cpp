#include "platform/x11/windows/WindowClass.h"

#include "platform/Text.h"

namespace platform::x11 {

namespace {

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
    return isUtf8(name) ? std::string(name) : fromLatin1(name);
}

}  // namespace platform::x11
