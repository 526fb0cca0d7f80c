#include "orvellos/tags/TagStyle.h"

#include <gtest/gtest.h>

#include "orvellos/base/PathGeometry.h"

namespace orvellos {

using platform::Point;

TEST(TagShapeTests, RoundsTheLuggageTag) {
    const Point expected[] = {{168, 0},         {168, 0},        {200, 32},        {200, 68},
                              {168, 100},       {55.799, 100},   {45.899, 95.899}, {15.556, 65.556},
                              {15.556, 34.444}, {45.899, 4.101}, {55.799, 0},      {168, 0}};
    const auto path = outlinePath(TagShape::Tag, 200, 100);
    ASSERT_EQ(path.elements.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_NEAR(path.elements[i].to.x, expected[i].x, 0.001) << i;
        EXPECT_NEAR(path.elements[i].to.y, expected[i].y, 0.001) << i;
    }
    EXPECT_EQ(outlinePath(TagShape::Tag, 20, 100).elements[0].to, (Point{11, 0}));
}

TEST(TagShapeTests, TellsInsideFromOutside) {
    struct Row {
        TagShape shape = TagShape::Tag;
        Point point;
        bool inside = false;
    };
    const Row rows[] = {{TagShape::Tag, {100, 50}, true},   {TagShape::Tag, {9, 50}, false},
                        {TagShape::Tag, {9.2, 50}, true},   {TagShape::Tag, {29, 80}, false},
                        {TagShape::Tag, {31, 80}, true},    {TagShape::Tag, {199, 1}, false},
                        {TagShape::Tag, {199, 50}, true},   {TagShape::Tag, {100, -1}, false},
                        {TagShape::Tag, {201, 50}, false},  {TagShape::Pill, {14, 14}, false},
                        {TagShape::Pill, {15, 15}, true},   {TagShape::Pill, {0.5, 50}, true},
                        {TagShape::Pill, {185, 86}, false}, {TagShape::Pill, {150, 99.5}, true}};
    for (const auto& [shape, point, inside] : rows) {
        SCOPED_TRACE(testing::Message() << rawValue(shape) << " " << point.x << ", " << point.y);
        const auto path = outlinePath(shape, 200, 100);
        EXPECT_EQ(contains(path, point), inside);
        EXPECT_EQ(contains(path, {point.x, 100 - point.y}), inside);
    }
}

TEST(TagShapeTests, LeavesAHoleByTheEvenOddRule) {
    auto ring = rectanglePath(30, 30);
    const auto hole = rectanglePath(10, 10);
    ring.elements.insert(ring.elements.end(), hole.elements.begin(), hole.elements.end());
    EXPECT_FALSE(contains(ring, {5, 5}));
    EXPECT_TRUE(contains(ring, {15, 5}));
}

}  // namespace orvellos
