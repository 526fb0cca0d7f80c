#include "orvellos/tags/DisplayLabel.h"

#include <utf8proc.h>

#include "orvellos/base/GraphemeClusters.h"

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

}  // namespace orvellos
