#include "orvellos/tags/TagColor.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvellos {
namespace {

Tag tagOfColor(std::string_view hex) {
    Tag tag;
    tag.colorHex = hex;
    return tag;
}

TEST(TagColorTests, ReadsSixHexadecimalDigits) {
    const platform::Color blue{0x3B / 255.0, 0x82 / 255.0, 0xF6 / 255.0, 1};
    for (const char* text : {"#3B82F6", "3b82f6", " \t3B82F6\r\n", "#3b82F6", "\u00A0#3B82F6\u2028"})
        EXPECT_EQ(colorFromHex(text), blue) << text;
    for (const char* text : {"", "#", "##3B82F6", "# 3B82F6", "#3B82F", "#3B82F6A", "#GG0000", "-3B82F",
                             "+3B82F", "0x3B82", "#3B82F6 #"})
        EXPECT_EQ(colorFromHex(text), std::nullopt) << text;
    EXPECT_EQ(tagColor(tagOfColor("blue")), blue);
}

TEST(TagColorTests, WritesTheNearestStep) {
    const std::pair<platform::Color, std::string> rows[] = {{{0.5, 0.0019, 0.002, 0.3}, "#800001"},
                                                            {{1.2, -0.1, 0x3C / 255.0}, "#FF003C"},
                                                            {{0, NAN, 0}, "#3B82F6"}};
    for (const auto& [color, hex] : rows) EXPECT_EQ(hexFromColor(color), hex);
}

TEST(TagColorTests, NamesThePalette) {
    const std::pair<std::string, std::string> rows[] = {
        {"#ef4444", "Red"}, {"#64748B", "Slate gray"}, {"#abcdef", "#abcdef"}, {"EF4444", "EF4444"}};
    for (const auto& [hex, name] : rows) EXPECT_EQ(paletteName(hex), name);
}

TEST(TagColorTests, WritesDarkOnBrightColoursOnly) {
    const platform::Color white{1, 1, 1, 1};
    const platform::Color dark{0.09, 0.11, 0.15, 1};
    const auto textOn = [](std::string_view hex) { return labelTextColor(tagOfColor(hex)); };
    for (const auto& color : tagPalette) EXPECT_EQ(textOn(color.hex), white) << color.name;
    EXPECT_EQ(relativeLuminance({1, 1, NAN}), 0);
    // Grey steps on both sides of the luminance 0.7: 0.694 and 0.701.
    const std::pair<std::string, platform::Color> rows[] = {
        {"#FFFFFF", dark}, {"#D9D9D9", white}, {"#DADADA", dark}, {"#00FF00", dark}, {"?", white}};
    for (const auto& [hex, expected] : rows) EXPECT_EQ(textOn(hex), expected) << hex;
}

}  // namespace
}  // namespace orvellos
