#include "orvellos/TagJson.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvellos {
namespace {

constexpr const char* kId = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

TEST(TagJsonTests, ReadsTagsStrictly) {
    struct Row {
        const char* name;
        const char* members;  // after the id
        bool decodes;
    };
    const Row rows[] = {
        {"required members only", R"("label":"A","colorHex":"blue")", true},
        {"all members and an unknown one",
         R"("label":"","colorHex":"#1","frame":[[1,-2.5],[3e2,4]],"spaceUUID":"S","x":{"y":[]})", true},
        {"nulls", R"("label":"A","colorHex":"#1","frame":null,"spaceUUID":null)", true},
        {"no label", R"("colorHex":"#1")", false},
        {"no colour", R"("label":"A")", false},
        {"null label", R"("label":null,"colorHex":"#1")", false},
        {"label of another type", R"("label":1,"colorHex":"#1")", false},
        {"frame as one flat list", R"("label":"A","colorHex":"#1","frame":[1,2,3,4])", false},
        {"frame with three pairs", R"("label":"A","colorHex":"#1","frame":[[1,2],[3,4],[5,6]])", false},
        {"frame with a short pair", R"("label":"A","colorHex":"#1","frame":[[1,2],[3]])", false},
        {"frame of texts", R"("label":"A","colorHex":"#1","frame":[["1",2],[3,4]])", false},
        {"frame with a boolean", R"("label":"A","colorHex":"#1","frame":[[true,2],[3,4]])", false},
        {"Space of another type", R"("label":"A","colorHex":"#1","spaceUUID":7)", false},
    };
    const std::string good = R"({"id":")" + std::string(kId) + R"(","label":"G","colorHex":""})";
    for (const auto& row : rows) {
        const auto element = R"({"id":")" + std::string(kId) + R"(",)" + row.members + "}";
        EXPECT_EQ(decodeTags("[" + good + "," + element + "]").has_value(), row.decodes) << row.name;
    }
    for (const auto* text : {"", "{}", "[[]]", R"([{"label":"A","colorHex":"#1"}])", "[",
                             R"([{"id":"no","label":"A","colorHex":"#1"}])"})
        EXPECT_FALSE(decodeTags(text)) << text;
    EXPECT_EQ(decodeTags(" [ ] "), std::vector<Tag>());
}

TEST(TagJsonTests, WritesSortedMembersOnePerLine) {
    const std::vector<Tag> tags{{.id = *TagID::parse(kId),
                                 .label = "Mail \"&\" Chat/☕",
                                 .colorHex = "#3B82F6",
                                 .frame = platform::Rect{1204, 812.5, 220, 0.1},
                                 .spaceUUID = "S-1"},
                                {.id = TagID(), .label = "", .colorHex = "x", .frame = {}, .spaceUUID = {}}};
    const auto text = encodeTags(tags);
    ASSERT_TRUE(text);
    EXPECT_EQ(text.value(), R"([
  {
    "colorHex" : "#3B82F6",
    "frame" : [
      [
        1204,
        812.5
      ],
      [
        220,
        0.1
      ]
    ],
    "id" : "E621E1F8-C36C-495A-93FC-0C247A3E6E5F",
    "label" : "Mail \"&\" Chat\/☕",
    "spaceUUID" : "S-1"
  },
  {
    "colorHex" : "x",
    "id" : "00000000-0000-0000-0000-000000000000",
    "label" : ""
  }
])");
    EXPECT_EQ(decodeTags(text.value()), tags);
}

TEST(TagJsonTests, RefusesFramesThatJsonCannotExpress) {
    for (const double number :
         {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()}) {
        Tag tag;
        tag.frame = platform::Rect{0, 0, 1, number};
        EXPECT_FALSE(encodeTags({tag}));
    }
}

}  // namespace
}  // namespace orvellos
