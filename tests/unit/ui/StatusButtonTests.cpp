// The status item's own button: where it is; and its icon in bars that show no text.

#include <gtest/gtest.h>

#include <QPainter>

#include "platform/simulated/SimulatedFiles.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "tests/support/OffscreenApplication.h"
#include "ui/status/StatusButtonPlace.h"
#include "ui/status/StatusIcon.h"
#include "ui/widgets/Colors.h"

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

// How many pixels of the icon, on that ground, are near the colour.
int pixelsNear(const QColor& color, const platform::StatusTitle& title, const QColor& ground, bool isKnown) {
    QImage picture(22, 22, QImage::Format_RGB32);
    picture.fill(ground);
    QPainter(&picture).drawPixmap(0, 0,
                                  statusIcon(title, isKnown ? std::optional(ground) : std::nullopt, 22, 1));
    int count = 0;
    for (int i = 0; i < 22 * 22; ++i) {
        const QColor pixel = picture.pixelColor(i % 22, i / 22);
        count += std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                     std::abs(pixel.blue() - color.blue()) <
                 90;
    }
    return count;
}

TEST(StatusIconTest, ShowsTheTitleOnAnyGround) {
    const desktop_test::OffscreenApplication application;
    const platform::StatusTitle::Label mail{toColor(QColor("#3B82F6")), "Mail"};
    const platform::StatusTitle::Label black{toColor(QColor("#101010")), "Black"};
    for (const QColor& ground : {QColor("#101010"), QColor("#F0F0F0"), QColor("#3B82F6")})
        for (const bool isKnown : {true, false}) {
            SCOPED_TRACE(ground.name().toStdString() + (isKnown ? " known" : " not known"));
            const auto count = [&](const char* color, const platform::StatusTitle& title) {
                return pixelsNear(QColor(color), title, ground, isKnown);
            };
            const auto seen = [&](const platform::StatusTitle& title) {
                return 22 * 22 - pixelsNear(ground, title, ground, isKnown);
            };
            EXPECT_GT(count("#3B82F6", {.label = mail}), 90) << "the tag's colour";
            EXPECT_GT(count("#3B82F6", {.hasHiddenSymbol = true, .label = mail}), 25) << "its dot";
            for (const platform::StatusTitle& title :
                 {platform::StatusTitle{}, platform::StatusTitle{.label = mail},
                  platform::StatusTitle{.label = black},
                  platform::StatusTitle{.hasHiddenSymbol = true, .label = {}}})
                EXPECT_GT(seen(title), 40);
        }
}

}  // namespace
}  // namespace ui
