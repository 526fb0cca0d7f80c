#include "orvellos/base/GraphemeClusters.h"

#include <utf8proc.h>

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

}  // namespace orvellos
