#include "platform/x11/screens/WorkArea.h"

#include <gtest/gtest.h>

#include <vector>

namespace platform::x11 {
namespace {

using Values = std::vector<std::uint32_t>;

// Two monitors side by side, the right one lower: root 3000 × 1200.
constexpr PixelRect kRoot{0, 0, 3000, 1200};
constexpr PixelRect kLeft{0, 0, 1000, 1000};
constexpr PixelRect kRight{1000, 200, 2000, 1000};

TEST(StrutTest, TakesFromTheMonitorsThatThePanelIsOn) {
    struct Case {
        const char* name;
        Values partial;
        PixelRect left, right;
    };
    for (const auto& [name, partial, left, right] : std::vector<Case>{
             {"top of the left", {0, 0, 30, 0, 0, 0, 0, 0, 0, 999, 0, 0}, {0, 30, 1000, 970}, kRight},
             {"top of both",
              {0, 0, 230, 0, 0, 0, 0, 0, 0, 2999, 0, 0},
              {0, 230, 1000, 770},
              {1000, 230, 2000, 970}},
             {"top, above the right one", {0, 0, 30, 0, 0, 0, 0, 0, 1000, 2999, 0, 0}, kLeft, kRight},
             {"first column of the right",
              {0, 0, 240, 0, 0, 0, 0, 0, 1000, 1000, 0, 0},
              kLeft,
              {1000, 240, 2000, 960}},
             {"bottom of the left, from the root's",
              {0, 0, 0, 250, 0, 0, 0, 0, 0, 0, 0, 999},
              {0, 0, 1000, 950},
              kRight},
             {"bottom of the right",
              {0, 0, 0, 50, 0, 0, 0, 0, 0, 0, 1000, 2999},
              kLeft,
              {1000, 200, 2000, 950}},
             {"left edge, beside the left one",
              {40, 0, 0, 0, 0, 999, 0, 0, 0, 0, 0, 0},
              {40, 0, 960, 1000},
              kRight},
             {"left of the right one",
              {1040, 0, 0, 0, 1100, 1199, 0, 0, 0, 0, 0, 0},
              kLeft,
              {1040, 200, 1960, 1000}},
             {"right edge", {0, 60, 0, 0, 0, 0, 0, 1199, 0, 0, 0, 0}, kLeft, {1000, 200, 1940, 1000}},
             {"right of the left one", {0, 2050, 0, 0, 0, 0, 0, 199, 0, 0, 0, 0}, {0, 0, 950, 1000}, kRight},
             {"as large as the screen", {0, 0, 1000, 0, 0, 0, 0, 0, 0, 999, 0, 0}, kLeft, kRight},
             {"absurd",
              {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0, 0xFFFFFFFF, 0, 0xFFFFFFFF, 0, 0xFFFFFFFF, 0,
               0xFFFFFFFF},
              kLeft,
              kRight},
             {"nothing", Values(12), kLeft, kRight},
         }) {
        const auto strut = strutOf(partial, {}).value();
        EXPECT_EQ(without(strut, kLeft, kLeft, kRoot), left) << name;
        EXPECT_EQ(without(strut, kRight, kRight, kRoot), right) << name;
    }
}

TEST(StrutTest, AddsUpAndNeverTakesAll) {
    const auto half = strutOf({}, Values{0, 0, 600, 0}).value();
    const auto other = strutOf({}, Values{0, 0, 0, 700}).value();
    const auto area = without(half, kLeft, kLeft, kRoot);
    EXPECT_EQ(area, (PixelRect{0, 600, 1000, 400}));
    EXPECT_EQ(without(other, area, kLeft, kRoot), area) << "nothing would be left";
}

TEST(StrutTest, PrefersThePartialPropertyWhenItIsWhole) {
    EXPECT_FALSE(strutOf(Values(11), Values(3)));
    EXPECT_EQ(strutOf(Values(11), Values{1, 2, 3, 4})->values,
              (std::array<std::uint32_t, 12>{1, 2, 3, 4, 0, 0xFFFF, 0, 0xFFFF, 0, 0xFFFF, 0, 0xFFFF}));
    EXPECT_EQ(strutOf(Values(12, 7), Values{1, 2, 3, 4})->values[0], 7U);
}

TEST(WorkAreaTest, IsTheDesktopsOwn) {
    const Values two = {0, 20, 1000, 980, 10, 0, 990, 1000};
    EXPECT_EQ(workAreaOf(two, 0), (PixelRect{0, 20, 1000, 980}));
    EXPECT_EQ(workAreaOf(two, 1), (PixelRect{10, 0, 990, 1000}));
    EXPECT_FALSE(workAreaOf(two, 2));
    EXPECT_FALSE(workAreaOf(two, 0xFFFFFFFF));
    EXPECT_TRUE(workAreasDiffer(two));
    EXPECT_FALSE(workAreasDiffer(Values{0, 20, 1000, 980, 0, 20, 1000, 980}));
}

TEST(WorkAreaTest, LeavesAMonitorThatItMisses) {
    EXPECT_EQ(within({0, 0, 1500, 1100}, kRight), (PixelRect{1000, 200, 500, 900}));
    EXPECT_EQ(within({0, 0, 1000, 1000}, kRight), kRight);
    EXPECT_EQ(within({0, 0, -5, -5}, kLeft), kLeft);
}

}  // namespace
}  // namespace platform::x11
