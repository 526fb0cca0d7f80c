#pragma once

#include <array>
#include <optional>
#include <span>

#include "platform/x11/screens/CoordinateSpace.h"

namespace platform::x11 {

// The edges of the root window that a panel keeps for itself, with the stretch of each edge (EWMH
// _NET_WM_STRUT_PARTIAL): left, right, top, bottom, then start and end along each of them.
struct Strut {
    std::array<std::uint32_t, 12> values{};
};

// From the values of _NET_WM_STRUT_PARTIAL or, where that is not whole, of _NET_WM_STRUT, which is along the
// whole edge. Absent when neither is.
[[nodiscard]] std::optional<Strut> strutOf(std::span<const std::uint32_t> partial,
                                           std::span<const std::uint32_t> plain);

// The rest of `area`, a part of `monitor`, beside the panel; all of it when nothing would be left.
[[nodiscard]] PixelRect without(const Strut& strut, const PixelRect& area, const PixelRect& monitor,
                                const PixelRect& root);

// The work area of a desktop from the values of _NET_WORKAREA, four for each; absent when it has none.
[[nodiscard]] std::optional<PixelRect> workAreaOf(std::span<const std::uint32_t> values,
                                                  std::uint32_t desktop);
// Whether two desktops have different work areas.
[[nodiscard]] bool workAreasDiffer(std::span<const std::uint32_t> values);

// The part of `area` inside `bounds`; all of it when there is none.
[[nodiscard]] PixelRect within(const PixelRect& bounds, const PixelRect& area);

}  // namespace platform::x11
