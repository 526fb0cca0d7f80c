#include "orvellos/LabelMatcher.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>

#include "orvellos/GraphemeClusters.h"

namespace orvellos {

namespace {

bool isLetterOrNumber(utf8proc_int32_t point) {
    const auto category = utf8proc_category(point);
    return (category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO) ||
           (category >= UTF8PROC_CATEGORY_ND && category <= UTF8PROC_CATEGORY_NO);
}

bool startsWithLetterOrNumber(std::string_view text) {
    utf8proc_int32_t point = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &point);
    return length > 0 && isLetterOrNumber(point);
}

// The text in the normal form that `form` names, each code point changed by `change` (if any) before.
std::string mapped(std::string_view text, utf8proc_option_t form, utf8proc_custom_func change) {
    utf8proc_uint8_t* result = nullptr;
    const auto length = utf8proc_map_custom(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                            static_cast<utf8proc_ssize_t>(text.size()), &result,
                                            utf8proc_option_t(form | UTF8PROC_STABLE), change, nullptr);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(result, std::free);
    return length < 0 ? std::string() : std::string(result, result + length);
}

std::string lowerCased(std::string_view cluster) {
    const auto toLower = [](utf8proc_int32_t point, void*) { return utf8proc_tolower(point); };
    // Decomposed first, so that a letter like dotted capital I keeps its mark.
    return mapped(mapped(cluster, UTF8PROC_DECOMPOSE, nullptr), UTF8PROC_COMPOSE, toLower);
}

}  // namespace

LabelMatcher::Normalized LabelMatcher::normalize(std::string_view text) {
    Normalized clusters;
    for (const auto cluster : graphemeClusters(text, std::numeric_limits<std::size_t>::max()))
        if (startsWithLetterOrNumber(cluster)) clusters.push_back(lowerCased(cluster));
    return clusters;
}

bool LabelMatcher::matches(std::string_view label) const {
    const auto normalized = normalize(label);
    if (normalized.empty() || query_.empty()) return false;
    const auto contains = [](const Normalized& text, const Normalized& part) {
        return std::search(text.begin(), text.end(), part.begin(), part.end()) != text.end();
    };
    return contains(normalized, query_) || contains(query_, normalized);
}

}  // namespace orvellos
