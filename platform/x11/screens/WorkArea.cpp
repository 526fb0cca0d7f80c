#include "platform/x11/screens/WorkArea.h"

namespace platform::x11 {

namespace {

// The corners of a rectangle, in numbers that sums of any property's values fit in.
struct Edges {
    std::int64_t left, top, right, bottom;  // the first pixels, and those after the last
};

Edges edgesOf(const PixelRect& r) {
    return {r.x, r.y, std::int64_t{r.x} + r.width, std::int64_t{r.y} + r.height};
}

PixelRect orElse(const Edges& edges, const PixelRect& otherwise) {
    if (edges.right <= edges.left || edges.bottom <= edges.top) return otherwise;
    return {static_cast<std::int32_t>(edges.left), static_cast<std::int32_t>(edges.top),
            static_cast<std::int32_t>(edges.right - edges.left),
            static_cast<std::int32_t>(edges.bottom - edges.top)};
}

}  // namespace

std::optional<Strut> strutOf(std::span<const std::uint32_t> partial, std::span<const std::uint32_t> plain) {
    Strut strut;
    if (partial.size() >= strut.values.size()) {
        std::copy_n(partial.begin(), strut.values.size(), strut.values.begin());
        return strut;
    }
    constexpr std::size_t kEdges = 4;
    constexpr std::uint32_t kWholeEdge = 0xFFFF;
    if (plain.size() < kEdges) return std::nullopt;
    std::copy_n(plain.begin(), kEdges, strut.values.begin());
    for (std::size_t edge = 0; edge < kEdges; ++edge) strut.values[kEdges + 2 * edge + 1] = kWholeEdge;
    return strut;
}

PixelRect without(const Strut& strut, const PixelRect& area, const PixelRect& monitor,
                  const PixelRect& root) {
    const auto& v = strut.values;
    const auto bounds = edgesOf(monitor);
    const auto rootEdges = edgesOf(root);
    const auto sharesRows = [&](std::uint32_t start, std::uint32_t end) {
        return start < bounds.bottom && bounds.top <= end;
    };
    const auto sharesColumns = [&](std::uint32_t start, std::uint32_t end) {
        return start < bounds.right && bounds.left <= end;
    };
    // An edge that is not inside the monitor belongs to a panel on another one.
    auto rest = edgesOf(area);
    if (v[0] > 0 && sharesRows(v[4], v[5]) && v[0] < bounds.right)
        rest.left = std::max<std::int64_t>(rest.left, v[0]);
    if (v[1] > 0 && sharesRows(v[6], v[7]) && rootEdges.right - v[1] > bounds.left)
        rest.right = std::min(rest.right, rootEdges.right - v[1]);
    if (v[2] > 0 && sharesColumns(v[8], v[9]) && v[2] < bounds.bottom)
        rest.top = std::max<std::int64_t>(rest.top, v[2]);
    if (v[3] > 0 && sharesColumns(v[10], v[11]) && rootEdges.bottom - v[3] > bounds.top)
        rest.bottom = std::min(rest.bottom, rootEdges.bottom - v[3]);
    return orElse(rest, area);
}

std::optional<PixelRect> workAreaOf(std::span<const std::uint32_t> values, std::uint32_t desktop) {
    const auto first = std::size_t{4} * desktop;
    if (values.size() < first + 4) return std::nullopt;
    const auto v = values.subspan(first, 4);
    return PixelRect{static_cast<std::int32_t>(v[0]), static_cast<std::int32_t>(v[1]),
                     static_cast<std::int32_t>(v[2]), static_cast<std::int32_t>(v[3])};
}

bool workAreasDiffer(std::span<const std::uint32_t> values) {
    for (std::size_t i = 4; i < values.size(); ++i)
        if (values[i] != values[i % 4]) return true;
    return false;
}

PixelRect within(const PixelRect& bounds, const PixelRect& area) {
    const auto a = edgesOf(bounds);
    const auto b = edgesOf(area);
    return orElse({std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                   std::min(a.bottom, b.bottom)},
                  area);
}

}  // namespace platform::x11
