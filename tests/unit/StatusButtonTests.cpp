// The status item's own button: where it is.

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDefaultsStore.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "ui/StatusButtonPlace.h"

namespace ui {
namespace {

using platform::Rect;
using platform::Screen;

TEST(StatusButtonPlaceTest, StaysInSightWhereTheUserHasPutIt) {
    platform::simulated::SimulatedRunLoop runLoop;
    platform::simulated::SimulatedScreens screens(runLoop);
    platform::simulated::SimulatedDefaultsStore defaults;
    StatusButtonPlace place(screens);
    const platform::Size small{34, 26};
    const platform::Size titled{134, 26};
    EXPECT_FALSE(place.frame(small)) << "there is no screen";
    const Screen main{platform::DisplayId{1}, {0, 0, 1440, 900}, {0, 40, 1440, 860}, 1};
    const Screen second{platform::DisplayId{2}, {1440, 0, 1920, 1080}, {1440, 0, 1920, 1050}, 1};
    const Screen smaller{platform::DisplayId{2}, {1440, 0, 1280, 720}, {1440, 0, 1280, 690}, 1};
    screens.setDisplayUuid({1}, "first");
    screens.setDisplayUuid({2}, "second");
    place.rememberIn(defaults);
    struct Row {
        const char* name;
        std::vector<Screen> screens;
        std::optional<Rect> put;
        platform::Size size;
        Rect frame;
    };
    for (const Row& row : {
             Row{"the lower right corner at first", {main, second}, {}, small, {1400, 46, 34, 26}},
             Row{"a title beside it", {main, second}, {}, titled, {1300, 46, 134, 26}},
             Row{"put on the second screen",
                 {main, second},
                 {{1500, 900, 34, 26}},
                 small,
                 {1500, 900, 34, 26}},
             Row{"a title there", {main, second}, {}, titled, {1500, 900, 134, 26}},
             Row{"the screen has become smaller", {main, smaller}, {}, small, {1500, 540, 34, 26}},
             Row{"the screen is gone", {main}, {}, small, {60, 750, 34, 26}},
             Row{"the screen is back", {main, second}, {}, small, {1500, 900, 34, 26}},
             Row{"dropped beside a screen", {main, second}, {{3350, -20, 34, 26}}, small, {3326, 0, 34, 26}},
             Row{"dropped where there is no screen",
                 {main, second},
                 {{-500, 2000, 34, 26}},
                 small,
                 {0, 874, 34, 26}},
         }) {
        SCOPED_TRACE(row.name);
        screens.setScreens(row.screens);
        if (row.put) place.put(*row.put);
        EXPECT_EQ(place.frame(row.size), row.frame);
        StatusButtonPlace later(screens);
        later.rememberIn(defaults);
        EXPECT_EQ(later.frame(row.size), row.frame) << "in the next run";
    }
    runLoop.advance(platform::seconds(1));
}

}  // namespace
}  // namespace ui
