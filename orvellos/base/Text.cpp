#include "orvellos/base/Text.h"

#include <utf8proc.h>
#include <cstdlib>
#include <memory>
#include <utility>

namespace orvellos {

namespace {

// The code point at the start of `text` (-1 for a stray byte) and how many bytes it takes.
std::pair<utf8proc_int32_t, std::size_t> firstCodePoint(std::string_view text) {
    utf8proc_int32_t point = 0;
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &point);
    return length > 0 ? std::pair{point, static_cast<std::size_t>(length)}
                      : std::pair{utf8proc_int32_t{-1}, std::size_t{1}};
}

}  // namespace

std::vector<std::string_view> graphemeClusters(std::string_view text, std::size_t most) {
    std::vector<std::string_view> clusters;
    utf8proc_int32_t state = 0;
    std::size_t start = 0;
    auto [previous, at] =
        text.empty() ? std::pair{utf8proc_int32_t{0}, std::size_t{0}} : firstCodePoint(text);
    while (start < text.size() && clusters.size() < most) {
        const auto [point, length] =
            at < text.size() ? firstCodePoint(text.substr(at)) : std::pair{-1, std::size_t{0}};
        const bool together = at < text.size() && point >= 0 && previous >= 0 &&
                              !utf8proc_grapheme_break_stateful(previous, point, &state);
        if (point < 0) state = 0;
        if (!together) {
            clusters.push_back(text.substr(start, at - start));
            start = at;
        }
        previous = point;
        at += length;
    }
    return clusters;
}

namespace {

// The text in the normal form that `form` names, each code point changed by `change` (if any) before.
std::string mapped(std::string_view text, utf8proc_option_t form, utf8proc_custom_func change) {
    utf8proc_uint8_t* result = nullptr;
    const auto length = utf8proc_map_custom(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                            static_cast<utf8proc_ssize_t>(text.size()), &result,
                                            utf8proc_option_t(form | UTF8PROC_STABLE), change, nullptr);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(result, std::free);
    return length < 0 ? std::string() : std::string(result, result + length);
}

}  // namespace

std::string lowerCased(std::string_view text) {
    const auto toLower = [](utf8proc_int32_t point, void*) { return utf8proc_tolower(point); };
    // Decomposed first, so that a letter like dotted capital I keeps its mark.
    return mapped(mapped(text, UTF8PROC_DECOMPOSE, nullptr), UTF8PROC_COMPOSE, toLower);
}

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
