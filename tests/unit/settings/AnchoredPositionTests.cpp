#include "orvellos/settings/AnchoredPosition.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace orvellos {

TEST(AnchoredPositionTests, KeepsToTheNearestEdges) {
    const platform::Rect screen{-100, 50, 1000, 800};
    const std::pair<platform::Point, AnchoredPosition> rows[] = {
        {{-90, 70}, {HEdge::Left, 10, VEdge::Bottom, 20}},
        {{880, 820}, {HEdge::Right, 20, VEdge::Top, 30}},
        {{399, 449}, {HEdge::Left, 499, VEdge::Bottom, 399}},
        {{400, 450}, {HEdge::Right, 500, VEdge::Top, 400}},
        {{-130, 900}, {HEdge::Left, -30, VEdge::Top, -50}}};
    for (const auto& [point, position] : rows) {
        EXPECT_EQ(anchoredPositionFromPoint(point, screen), position);
        EXPECT_EQ(position.anchorPoint(screen), point);
    }
}

TEST(AnchoredPositionTests, ReadsWhatItWritesAndNothingElse) {
    const AnchoredPosition position{HEdge::Left, 12.5, VEdge::Bottom, -3};
    const auto good = toJson(position);
    EXPECT_EQ(good.dump(), R"({"hEdge":"left","hOffset":12.5,"vEdge":"bottom","vOffset":-3.0})");
    EXPECT_EQ(anchoredPositionFromJson(good), position);

    const std::pair<const char*, nlohmann::json> faults[] = {
        {"hEdge", "Left"}, {"hEdge", "top"}, {"vEdge", 1},     {"vEdge", nullptr},
        {"hOffset", "1"},  {"hOffset", {1}}, {"vOffset", true}};
    for (const auto& [key, value] : faults) {
        auto bad = good;
        bad[key] = value;
        EXPECT_EQ(anchoredPositionFromJson(bad), std::nullopt) << bad;
        bad.erase(key);
        EXPECT_EQ(anchoredPositionFromJson(bad), std::nullopt) << bad;
    }
    EXPECT_EQ(anchoredPositionFromJson(nlohmann::json::array({good})), std::nullopt);
    auto more = good;
    more["hOffset"] = 7;
    more["other"] = nullptr;
    EXPECT_EQ(anchoredPositionFromJson(more)->hOffset, 7);
}

}  // namespace orvellos
