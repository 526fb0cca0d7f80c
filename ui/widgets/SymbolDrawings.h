#pragma once

#include <QPainterPath>
#include <optional>
#include <string_view>

namespace ui {

// A symbol, on a grid of kSymbolGrid units each way, as it is stroked and filled in one colour.
struct SymbolDrawing {
    QPainterPath stroked;
    QPainterPath filled;
};
inline constexpr double kSymbolGrid = 16;
inline constexpr double kSymbolStroke = 1.35;

// Absent for a name without a symbol.
[[nodiscard]] std::optional<SymbolDrawing> drawingOf(std::string_view name);

}  // namespace ui
