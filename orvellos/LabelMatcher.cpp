#include "orvellos/LabelMatcher.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>

namespace orvellos {

namespace {

using CodePoints = std::vector<utf8proc_int32_t>;
constexpr std::string_view kReplacement = "\uFFFD";
constexpr auto kDecompose = utf8proc_option_t(UTF8PROC_DECOMPOSE | UTF8PROC_STABLE);
constexpr auto kCompose = utf8proc_option_t(UTF8PROC_COMPOSE | UTF8PROC_STABLE);

// The text with every byte that is not part of UTF-8 made U+FFFD.
std::string sanitized(std::string_view text) {
    std::string valid;
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    for (std::size_t at = 0; at < text.size();) {
        utf8proc_int32_t point = 0;
        const auto length =
            utf8proc_iterate(bytes + at, static_cast<utf8proc_ssize_t>(text.size() - at), &point);
        valid += length > 0 ? text.substr(at, static_cast<std::size_t>(length)) : kReplacement;
        at += length > 0 ? static_cast<std::size_t>(length) : 1;
    }
    return valid;
}

CodePoints decomposed(const std::string& text) {
    const auto decompose = [&text](CodePoints& points) {
        return utf8proc_decompose(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                  static_cast<utf8proc_ssize_t>(text.size()), points.data(),
                                  static_cast<utf8proc_ssize_t>(points.size()), kDecompose);
    };
    CodePoints points;
    points.resize(static_cast<std::size_t>(std::max<utf8proc_ssize_t>(decompose(points), 0)));
    return decompose(points) < 0 ? CodePoints() : points;
}

bool isLetterOrNumber(utf8proc_int32_t point) {
    const auto category = utf8proc_category(point);
    return (category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO) ||
           (category >= UTF8PROC_CATEGORY_ND && category <= UTF8PROC_CATEGORY_NO);
}

std::string encode(const utf8proc_int32_t* first, const utf8proc_int32_t* last) {
    std::string text;
    for (; first != last; ++first) {
        std::array<utf8proc_uint8_t, 4> bytes{};
        const auto length = utf8proc_encode_char(*first, bytes.data());
        text.append(bytes.begin(), bytes.begin() + length);
    }
    return text;
}

}  // namespace

LabelMatcher::Normalized LabelMatcher::normalize(std::string_view text) {
    auto points = decomposed(sanitized(text));
    std::ranges::transform(points, points.begin(), utf8proc_tolower);
    const auto length =
        utf8proc_normalize_utf32(points.data(), static_cast<utf8proc_ssize_t>(points.size()), kCompose);
    points.resize(static_cast<std::size_t>(std::max<utf8proc_ssize_t>(length, 0)));

    Normalized clusters;
    utf8proc_int32_t state = 0;
    for (auto start = points.begin(); start != points.end();) {
        auto end = start + 1;
        while (end != points.end() && !utf8proc_grapheme_break_stateful(*(end - 1), *end, &state)) ++end;
        if (isLetterOrNumber(*start)) clusters.push_back(encode(&*start, &*start + (end - start)));
        start = end;
    }
    return clusters;
}

bool LabelMatcher::matches(std::string_view label) const {
    const auto normalized = normalize(label);
    if (normalized.empty() || query_.empty()) return false;
    const auto contains = [](const Normalized& text, const Normalized& part) {
        return !std::ranges::search(text, part).empty();
    };
    return contains(normalized, query_) || contains(query_, normalized);
}

}  // namespace orvellos
