#include "orvellos/tags/TagJson.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <limits>

namespace orvellos {
namespace {

constexpr const char* kId = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

TEST(TagJsonTests, ReadsTagsStrictly) {
    const std::pair<const char*, bool> rows[] = {
        // What follows the id, and whether that makes a tag.
        {R"("label":"A","colorHex":"blue")", true},
        {R"("label":"","colorHex":"#1","frame":[[1,-2.5],[3e2,4]],"spaceUUID":"S","x":{"y":[]})", true},
        {R"("label":"A","colorHex":"#1","frame":null,"spaceUUID":null)", true},
        {R"("label":"A","colorHex":"#1","frame":[[1,2],[3,4]],"frame":null)", true},
        {R"("colorHex":"#1")", false},
        {R"("label":"A")", false},
        {R"("label":null,"colorHex":"#1")", false},
        {R"("label":1,"colorHex":"#1")", false},
        {R"("label":["A"],"colorHex":"#1")", false},
        {R"("x":{"label":"A","colorHex":"#1"})", false},
        {R"("label":"A","colorHex":"#1","spaceUUID":7)", false},
    };
    const auto decodes = [](const std::string& members) {
        return decodeTags(fmt::format(R"([{{"id":"{0}","label":"G","colorHex":""}},{{"id":"{0}",{1}}}])", kId,
                                      members))
            .has_value();
    };
    for (const auto& [members, isTag] : rows) EXPECT_EQ(decodes(members), isTag) << members;
    for (const auto* frame :
         {"[1,2,3,4]", "[[1,2],[3,4],[5,6]]", "[[1,2],[3]]", R"([["1",2],[3,4]])", "[[true,2],[3,4]]",
          R"({"x":1})", "[[1,2,3],[4]]", "[[1,2],[],[3,4]]", "[[[1,2]],[3,4]]", "[[1,2],[3,4,5]]"})
        EXPECT_FALSE(decodes(fmt::format(R"("label":"A","colorHex":"#1","frame":{})", frame))) << frame;
    for (const auto& [depth, isTag] : {std::pair(60, true), std::pair(1000000, false)}) {
        const std::string open(depth, '['), close(depth, ']');
        EXPECT_EQ(decodes(fmt::format(R"("label":"A","colorHex":"#1","x":{}{})", open, close)), isTag);
    }
    for (const auto* text :
         {"", "1", "null", "[1]", "[null]", "[[1]]", "[]]", "{}", "[[]]",
          R"([{"label":"A","colorHex":"#1"}])", "[", R"([{"id":"no","label":"A","colorHex":"#1"}])"})
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
