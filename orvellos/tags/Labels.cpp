#include "orvellos/tags/Labels.h"

#include <utf8proc.h>
#include <algorithm>
#include <limits>

#include "orvellos/base/Text.h"

namespace orvellos {

namespace {

bool breaksLines(std::string_view cluster) {
    utf8proc_int32_t point = 0;
    utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(cluster.data()),
                     static_cast<utf8proc_ssize_t>(cluster.size()), &point);
    const auto category = utf8proc_category(point);
    return category == UTF8PROC_CATEGORY_CC || category == UTF8PROC_CATEGORY_ZL ||
           category == UTF8PROC_CATEGORY_ZP;
}

}  // namespace

std::string shortLabel(std::string_view label, std::size_t most) {
    auto clusters = graphemeClusters(label, most + 1);
    const bool isCut = clusters.size() > most;
    if (isCut) clusters.resize(most - 1);
    std::string text;
    for (const auto cluster : clusters) text += breaksLines(cluster) ? " " : cluster;
    return isCut ? text + "…" : text;
}

std::string quotedLabel(std::string_view label) {
    return "“" + shortLabel(label) + "”";
}

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
