#include "orvellos/tags/TagLayout.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedWindowSystem.h"

namespace orvellos {
namespace {

using platform::Rect;
using platform::Size;

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

TEST(TagLayoutTests, MakesRoomForTheLabel) {
    struct Row {
        std::string label;
        double height = 0;
        TagShape shape = TagShape::Tag;
        Size window;
    };
    platform::simulated::SimulatedTextMeasurer measurer;  // half the font's size for each byte
    measurer.widths = {{"100", 100}, {"99.2", 99.2}};
    const Row rows[] = {{"100", 30, TagShape::Pill, {177.5, 70}},
                        {"99.2", 30, TagShape::Tag, {182, 70}},
                        {repeated("x", 20), 30, TagShape::Tag, {222, 70}},  // measured at 14, not 13.5
                        {"", 30, TagShape::Tag, {121, 70}},
                        {"a\nb", 100, TagShape::Pill, {310, 140}},
                        {repeated("x", 999), 20, TagShape::Pill, {6 + 203 * 4.5 + 0.5 + 19 + 40, 60}},
                        {"x" + repeated("\u0301", 3000), 30, TagShape::Pill, {121, 70}}};
    for (const auto& [label, height, shape, window] : rows)
        EXPECT_EQ(tagWindowSize(label, height, shape, measurer), window) << label;
}

TEST(TagLayoutTests, FillsTheWindowInTheWideStylesOnly) {
    struct Row {
        std::optional<MissionControlStyle> style;
        int length = 0;
        Rect tint;
        bool swatch = false;
        double font = 0;
    };
    const platform::simulated::SimulatedTextMeasurer measurer;
    const Rect inset{20, 20, 360, 160};
    const Rect whole{0, 0, 400, 200};
    const Row rows[] = {{std::nullopt, 100, inset, true, 72},
                        {MissionControlStyle::Pill, 2, inset, true, 72},
                        {MissionControlStyle::Fullscreen, 0, whole, false, 100},
                        {MissionControlStyle::Fullscreen, 2, whole, false, 100},
                        {MissionControlStyle::Fullscreen, 10, whole, false, 72},
                        {MissionControlStyle::Fullscreen, 100, whole, false, 8},
                        {MissionControlStyle::HeaderBar, 2, whole, false, 130},
                        {MissionControlStyle::HeaderBar, 200, whole, false, 8}};
    for (const auto& [style, length, tint, swatch, font] : rows) {
        SCOPED_TRACE(testing::Message() << (style ? rawValue(*style) : "main") << " " << length);
        const TagAppearance appearance{repeated("x", length), {}, {}, TagShape::Tag, style};
        const auto layers = layOutTag({400, 200}, appearance, measurer);
        EXPECT_EQ(layers.tintLayer.frame, tint);
        EXPECT_EQ(layers.tintLayer.frame, tint);
        EXPECT_EQ(!layers.swatchLayer.hidden, swatch);
        EXPECT_EQ(!layers.highlightLayer.hidden, swatch);
        EXPECT_DOUBLE_EQ(layers.textLayer.fontSize, font);
        EXPECT_DOUBLE_EQ(layers.textLayer.frame.midY(), tint.height / 2);
    }
}

TEST(TagLayoutTests, ShowsTheLabelAsOneBoundedLine) {
    const std::pair<std::string, std::string> rows[] = {
        {"a\r\nb\tc\x01\x7F", "a b c  "},
        {"a\u0085b\u2028c\u2029d", "a b c d"},
        {"Büro…", "Büro…"},
        {repeated("ü", 200), repeated("ü", 200)},
        {repeated("e\u0301", 201), repeated("e\u0301", 200) + "…"},
        {repeated("\n", 100000), repeated(" ", 200) + "…"}};
    for (const auto& [label, shown] : rows) EXPECT_EQ(displayedLabel(label), shown);
}

}  // namespace
}  // namespace orvellos
