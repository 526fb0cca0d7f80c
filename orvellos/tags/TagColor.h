#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "orvellos/tags/Tag.h"
#include "platform/Geometry.h"

namespace orvellos {

struct PaletteColor {
    std::string_view hex;
    std::string_view name;
};
inline constexpr std::array<PaletteColor, 8> tagPalette = {{{"#3B82F6", "Blue"},
                                                            {"#10B981", "Green"},
                                                            {"#F59E0B", "Amber"},
                                                            {"#EF4444", "Red"},
                                                            {"#8B5CF6", "Purple"},
                                                            {"#EC4899", "Pink"},
                                                            {"#14B8A6", "Teal"},
                                                            {"#64748B", "Slate gray"}}};

// Six hexadecimal digits, with or without one "#" before and white space around; absent for anything else.
[[nodiscard]] std::optional<platform::Color> colorFromHex(std::string_view text);
// "#RRGGBB" in upper case, each component rounded to the nearest of 256 steps. The first colour of the
// palette when a component is no number.
[[nodiscard]] std::string hexFromColor(const platform::Color& color);
// The palette's name for a hex text in either case, or the text itself.
[[nodiscard]] std::string paletteName(std::string_view hex);
// WCAG 2 relative luminance, in 0…1; 0 when a component is no number.
[[nodiscard]] double relativeLuminance(const platform::Color& color);

// The tag's fill: its colour, or the system blue when that cannot be read.
[[nodiscard]] platform::Color tagColor(const Tag& tag);
// Dark on a bright tag, white on any other.
[[nodiscard]] platform::Color labelTextColor(const Tag& tag);

}  // namespace orvellos
