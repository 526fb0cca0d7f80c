#include "orvellos/windows/PositionController.h"

#include "tests/support/ManagerTest.h"

namespace orvellos {
namespace {

using platform::Point;
using platform::Rect;

class PositionControllerTests : public ManagerTest {
  protected:
    void expectCentre(std::size_t index, Point centre) {
        EXPECT_NEAR(window(index).frame().midX(), centre.x, 1e-6) << tag(index).label;
        EXPECT_NEAR(window(index).frame().midY(), centre.y, 1e-6) << tag(index).label;
    }
    // Big enough to be seen through, at the same place.
    void expectBackupAt(std::size_t index, Point centre) {
        EXPECT_NEAR(backup(index).frame().midX(), centre.x, 1e-6);
        EXPECT_NEAR(backup(index).frame().midY(), centre.y, 1e-6);
    }
};

TEST_F(PositionControllerTests, AnAnchoredTagTakesTheOthersAlong) {
    settings_.missionControlStyle.set(MissionControlStyle::Pill);
    start();
    const Point start = window(0).frame().center();
    const Point moved{start.x - 500, start.y - 300};
    drag(0, -500, -300);
    expectCentre(1, start);
    wait(0.1);
    EXPECT_NE(window(1).frame().center(), start) << "animated";
    settle();
    expectCentre(0, moved);
    expectCentre(1, moved);
    expectBackupAt(0, moved);
    expectBackupAt(1, moved);
    const auto shared = settings_.globalAnchoredPosition.get().value();
    EXPECT_EQ(shared.hEdge, HEdge::Left);
    EXPECT_NEAR(shared.hOffset, moved.x, 1e-6);
    EXPECT_NEAR(shared.vOffset, 900 - moved.y, 1e-6);
    EXPECT_FALSE(tag(0).frame);
}

TEST_F(PositionControllerTests, ShiftDetachesATagWhichThenStaysDetached) {
    start();
    const auto shared = settings_.globalAnchoredPosition.get();
    const Point start = window(0).frame().center();
    drag(0, -500, -300, true);
    drag(0, 50, 50);
    settle();
    EXPECT_EQ(settings_.globalAnchoredPosition.get(), shared);
    EXPECT_EQ(tag(0).frame, window(0).frame());
    expectCentre(0, {start.x - 450, start.y - 250});
    expectCentre(1, start);
    settings_.tagSize.set(TagSize::Large);
    settle();
    expectCentre(0, {start.x - 450, start.y - 250});
    manager_.relinkToSharedPosition(tag(0).id);
    settle();
    EXPECT_FALSE(tag(0).frame);
    expectCentre(0, start);
}

TEST_F(PositionControllerTests, RelinkingWithoutASharedPositionMovesNothing) {
    store_.updateFrame(tag(0).id, {300, 300, 100, 50});
    start();
    settings_.globalAnchoredPosition.set(std::nullopt);
    const Rect before = window(0).frame();
    manager_.relinkToSharedPosition(tag(0).id);
    settle();
    EXPECT_FALSE(tag(0).frame);
    EXPECT_EQ(window(0).frame(), before);
}

TEST_F(PositionControllerTests, AlignsAllTagsToOne) {
    store_.updateFrame(tag(0).id, {300, 300, 100, 50});
    start();
    manager_.alignAllToTag(tag(0).id);
    settle();
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_FALSE(tag(i).frame);
        expectCentre(i, {350, 325});
    }
    manager_.alignAllToTag(TagID::random());
    expectCentre(0, {350, 325});
}

// The screen of a tag, by the display that its Space is on, by the place of the window, or the main one.
TEST_F(PositionControllerTests, PlacesATagOnTheScreenOfItsSpace) {
    auto& screens = desktop_.screens;
    screens.addScreen({1440, 0, 1000, 800}, "SECOND");
    screens.setDisplayUuid({1}, "FIRST");
    auto& displays = desktop_.spaces.displays();
    displays.clear();
    desktop_.spaces.addDisplay("FIRST", {"A"});
    desktop_.spaces.addDisplay("SECOND", {"C"});
    settings_.globalAnchoredPosition.set(AnchoredPosition{HEdge::Left, 300, VEdge::Bottom, 200});
    start();
    expectCentre(0, {300, 200});
    expectCentre(1, {1740, 200});
    drag(1, 100, 100);
    settle();
    expectCentre(1, {1840, 300});
    expectCentre(0, {400, 300});
    manager_.createTag("x", "", "gone");
    for (const auto& [x, homeX] : {std::pair(1500.0, 1840.0), {9000.0, 400.0}}) {
        window(2).setFrameWithoutPersisting({x, 100, 10, 10}, false);
        settings_.tagSize.set(TagSize::Small);
        settle();
        expectCentre(2, {homeX, 300});
    }
}

TEST_F(PositionControllerTests, AnchoredTagsShareTheMonitorThatTheUserPutsThemOn) {
    auto& screens = desktop_.screens;
    screens.setDisplayUuid({1}, "FIRST");
    screens.addScreen({1440, 0, 1000, 800}, "SECOND");
    const auto both = screens.screens();
    start();
    drag(0, 700, -200);
    settle();
    manager_.createTag("New", "#EF4444");
    for (const std::size_t i : {0U, 1U, 2U}) expectCentre(i, {1916, 644});
    screens.setScreens({both[0]});
    settle();
    expectCentre(1, {476, 744});
    drag(1, 100, 0);
    settle();
    screens.setScreens(both);
    settle();
    for (const std::size_t i : {0U, 1U}) expectCentre(i, {2016, 644});
}

TEST_F(PositionControllerTests, WithoutAScreenEveryTagKeepsItsPlace) {
    start();
    const Point place = window(0).frame().center();
    const auto shared = settings_.globalAnchoredPosition.get();
    desktop_.screens.setScreens({});
    settle();
    expectCentre(0, place);
    drag(0, 30, 30);
    settle();
    EXPECT_EQ(settings_.globalAnchoredPosition.get(), shared);
}

}  // namespace
}  // namespace orvellos
