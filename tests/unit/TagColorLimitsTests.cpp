#include <gtest/gtest.h>

#include <cmath>

#include "orvellos/TagColor.h"

namespace orvellos {

TEST(TagColorLimitsTests, ReadsAndWritesUnusualColours) {
    EXPECT_EQ(colorFromHex("\u00A0#3B82F6\u2028"), colorFromHex("#3B82F6"));
    EXPECT_EQ(hexFromColor({0, NAN, 0, 1}), "#3B82F6");
    EXPECT_EQ(relativeLuminance({1, 1, NAN, 1}), 0);
    EXPECT_EQ(relativeLuminance({-1, -1, -1, 1}), 0);
}

}  // namespace orvellos
