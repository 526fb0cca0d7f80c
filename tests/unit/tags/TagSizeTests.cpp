#include "orvellos/tags/TagStyle.h"

#include <gtest/gtest.h>

namespace orvellos {

TEST(TagSizeTests, IsAFractionOfTheScreenAndNeverTooSmall) {
    struct Row {
        TagSize size = TagSize::Small;
        std::optional<double> screenHeight;
        double expected = 0;
    };
    const Row rows[] = {{TagSize::ExtraSmall, 1117, 28},      {TagSize::ExtraSmall, 1500, 38},
                        {TagSize::Small, std::nullopt, 42},   {TagSize::Medium, 1117, 67},
                        {TagSize::Large, 600, 100},           {TagSize::ExtraLarge, 1440, 216},
                        {TagSize::MissionControl, 1440, 331}, {TagSize::MissionControl, std::nullopt, 240}};
    for (const auto& [size, height, expected] : rows) {
        std::optional<platform::Screen> screen;
        if (height)
            screen = platform::Screen{.displayId = {}, .frame = {0, 0, 100, *height}, .visibleFrame = {}};
        EXPECT_EQ(baseHeight(size, screen), expected) << rawValue(size);
    }
}

}  // namespace orvellos
