#include "orvellos/windows/TagWindows.h"

#include "tests/support/ManagerTest.h"

namespace orvellos {
namespace {

using platform::Rect;

class TagWindowsTest : public ManagerTest {};

TEST_F(TagWindowsTest, PlacesTheBackupForEachStyle) {
    start();
    const Rect main = seen(0).frame;
    const auto use = [&](MissionControlStyle style) {
        settings_.missionControlStyle.set(style);
        wait(0.001);
        return seen(backup(0));
    };
    EXPECT_EQ(use(MissionControlStyle::Fullscreen).frame, (Rect{0, 0, 1440, 900}));
    EXPECT_TRUE(seen(backup(0)).layers.swatchLayer.hidden);
    EXPECT_EQ(use(MissionControlStyle::HeaderBar).frame, (Rect{0, 720, 1440, 180}));
    EXPECT_EQ(use(MissionControlStyle::Pill).frame.height, 240 + 40);
    EXPECT_FALSE(seen(backup(0)).layers.swatchLayer.hidden);
    EXPECT_EQ(seen(0).frame, main);
}

TEST_F(TagWindowsTest, FollowsTheSizeTheShapeAndTheScreens) {
    settings_.missionControlStyle.set(MissionControlStyle::Fullscreen);
    start();
    settings_.tagSize.set(TagSize::Large);
    settle();
    EXPECT_EQ(seen(0).frame.height, 100 + 40);
    const auto outline = seen(0).layers.tintLayer.path;
    settings_.globalTagShape.set(TagShape::Pill);
    wait(0.001);
    EXPECT_NE(seen(0).layers.tintLayer.path, outline);
    store_.updateFrame(tag(0).id, {1300, 850, 50, 50});
    desktop_.screens.setScreens({{platform::DisplayId{1}, {0, 0, 800, 600}, {0, 0, 800, 600}, 1}});
    settle();
    EXPECT_FALSE(tag(0).frame) << "on a screen that is gone";
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(seen(i).frame.midX(), 800 - 224, 1e-9);
        EXPECT_NEAR(seen(i).frame.midY(), 600 - 56, 1e-9);
        EXPECT_EQ(seen(backup(i)).frame, (Rect{0, 0, 800, 600}));
    }
}

}  // namespace
}  // namespace orvellos
