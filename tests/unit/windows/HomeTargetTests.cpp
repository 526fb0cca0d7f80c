#include "orvellos/windows/HomeTarget.h"

#include <gtest/gtest.h>

namespace orvellos {

TEST(HomeTargetTests, CentresOnTheAnchorAndStaysNearTheScreen) {
    struct Row {
        platform::Size size;
        AnchoredPosition position;
        platform::Point origin;
    };
    const ScreenContext screen(
        {.displayId = {}, .frame = {100, 0, 1000, 800}, .visibleFrame = {100, 0, 1000, 770}});
    const Row rows[] = {{{100, 70}, {HEdge::Left, 300, VEdge::Top, 100}, {350, 635}},
                        {{100, 70}, {HEdge::Right, 0, VEdge::Top, 0}, {1020, 735}},
                        {{100, 70}, {HEdge::Right, 30, VEdge::Top, -100}, {1020, 750}},
                        {{100, 70}, {HEdge::Left, 0, VEdge::Bottom, 0}, {80, -20}},
                        {{2000, 900}, {HEdge::Right, 400, VEdge::Top, 300}, {80, -20}}};
    for (const auto& [size, position, origin] : rows)
        EXPECT_EQ(anchoredFrame(size, position, screen),
                  (platform::Rect{origin.x, origin.y, size.width, size.height}));
    EXPECT_EQ(detachedFrame({100, 70}, {-100, 100, 50, 50}), (platform::Rect{-125, 90, 100, 70}));
}

}  // namespace orvellos
