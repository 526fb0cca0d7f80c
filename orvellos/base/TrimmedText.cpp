#include "orvellos/base/TrimmedText.h"

#include <utf8proc.h>

namespace orvellos {

namespace {

// The bytes of the white-space character that `text` starts with; 0 when it starts with something else.
std::size_t whiteSpaceLength(std::string_view text) {
    utf8proc_int32_t character = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &character);
    if (length <= 0) return 0;
    const auto category = utf8proc_category(character);
    const bool space = category == UTF8PROC_CATEGORY_ZS || category == UTF8PROC_CATEGORY_ZL ||
                       category == UTF8PROC_CATEGORY_ZP || (character >= 0x09 && character <= 0x0D) ||
                       character == 0x85;
    return space ? static_cast<std::size_t>(length) : 0;
}

std::size_t startOfLastCharacter(std::string_view text) {
    std::size_t start = text.size() - 1;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U) --start;
    return start;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    while (!text.empty()) {
        const auto length = whiteSpaceLength(text);
        if (length == 0) break;
        text.remove_prefix(length);
    }
    while (!text.empty()) {
        const auto last = startOfLastCharacter(text);
        if (whiteSpaceLength(text.substr(last)) != text.size() - last) break;
        text.remove_suffix(text.size() - last);
    }
    return text;
}

}  // namespace orvellos
