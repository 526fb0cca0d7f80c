#include "orvellos/tags/TagColor.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "orvellos/base/Text.h"
#include "platform/Text.h"

namespace orvellos {

namespace {

constexpr platform::Color kSystemBlue{0x3B / 255.0, 0x82 / 255.0, 0xF6 / 255.0, 1};
constexpr platform::Color kDarkText{0.09, 0.11, 0.15, 1};
constexpr platform::Color kLightText{1, 1, 1, 1};
constexpr double kBrightFrom = 0.7;

bool isNumeric(const platform::Color& color) {
    return !std::isnan(color.red) && !std::isnan(color.green) && !std::isnan(color.blue);
}

double linear(double value) {
    const double component = std::clamp(value, 0.0, 1.0);
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

}  // namespace

std::optional<platform::Color> colorFromHex(std::string_view text) {
    auto digits = trimmed(text);
    if (digits.starts_with('#')) digits.remove_prefix(1);
    unsigned number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (digits.size() != 6 || error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return platform::Color{(number >> 16 & 0xFF) / 255.0, (number >> 8 & 0xFF) / 255.0,
                           (number & 0xFF) / 255.0, 1};
}

std::string hexFromColor(const platform::Color& color) {
    if (!isNumeric(color)) return std::string(tagPalette[0].hex);
    const auto step = [](double c) { return static_cast<int>(std::round(std::clamp(c, 0.0, 1.0) * 255)); };
    return fmt::format("#{:02X}{:02X}{:02X}", step(color.red), step(color.green), step(color.blue));
}

std::string paletteName(std::string_view hex) {
    const auto* found = std::ranges::find_if(
        tagPalette, [&](const PaletteColor& color) { return platform::equalIgnoringCase(color.hex, hex); });
    return std::string(found == tagPalette.end() ? hex : found->name);
}

double relativeLuminance(const platform::Color& color) {
    if (!isNumeric(color)) return 0;
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

platform::Color tagColor(const Tag& tag) {
    return colorFromHex(tag.colorHex).value_or(kSystemBlue);
}

platform::Color labelTextColor(const Tag& tag) {
    return relativeLuminance(tagColor(tag)) > kBrightFrom ? kDarkText : kLightText;
}

}  // namespace orvellos
