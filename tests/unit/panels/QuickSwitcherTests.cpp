#include "orvellos/panels/QuickSwitcher.h"

#include "tests/support/InterfaceTest.h"

namespace orvellos {
namespace {

using Indices = std::vector<std::size_t>;

// Fourteen Spaces, of which the second is current and some are tagged.
class QuickSwitcherTest : public testing::Test, QuickSwitcher::Owner {
  protected:
    static std::vector<MenuSpaceRow> rows(std::size_t count = 14) {
        std::vector<MenuSpaceRow> made;
        for (std::size_t i = 1; i <= count; ++i)
            made.push_back({"S" + std::to_string(i), i, std::nullopt, i == 2});
        if (count > 4) {
            made[0].tag = {TagID::random(), "Work Notes", "#3B82F6", {}, "S1"};
            made[4].tag = {TagID::random(), "ÉCOLE\n3rd", "#3B82F6", {}, "S5"};
        }
        return made;
    }
    QuickSwitcher make(std::vector<MenuSpaceRow> shown) { return {std::move(shown), *this}; }
    void navigate(const MenuSpaceRow& row) override { went_.push_back(row.spaceUUID); }
    void onClose() override { went_.emplace_back("closed"); }
    static Indices found(QuickSwitcher& switcher, const char* query) {
        switcher.setQuery(query);
        Indices indices;
        for (const auto& row : switcher.filteredRows()) indices.push_back(row.displayIndex);
        return indices;
    }

    Texts went_;
};

TEST_F(QuickSwitcherTest, FindsSpacesByLabelAndNumber) {
    auto switcher = make(rows());
    EXPECT_EQ(found(switcher, " \t\n").size(), 14U);
    EXPECT_EQ(found(switcher, "DESK").size(), 14U);
    EXPECT_EQ(found(switcher, "  Work "), Indices{1});
    EXPECT_EQ(found(switcher, "école"), Indices{5});
    EXPECT_EQ(found(switcher, "3"), (Indices{3, 5, 13}));
    EXPECT_EQ(found(switcher, "desktop 1"), (Indices{1, 10, 11, 12, 13, 14}));
    EXPECT_EQ(found(switcher, "work notes 2"), Indices{});
    EXPECT_EQ(switcher.emptyText(), "No matches");
    auto two = make(rows(2));
    EXPECT_EQ(found(two, "3"), Indices{});
    auto none = make({});
    EXPECT_EQ(none.emptyText(), "No Spaces");
    none.moveSelection(1);
    none.activateSelected();
    EXPECT_TRUE(went_.empty());
}

TEST_F(QuickSwitcherTest, KeysMoveTheSelectionAndJump) {
    auto switcher = make(rows(3));
    EXPECT_EQ(switcher.selectedIndex(), 1U) << "the current Space";
    constexpr std::uint16_t kUp = 126, kDown = 125, kReturn = 36, kEnter = 76, kEscape = 53, kA = 0;
    for (const auto& [keyCode, index] :
         {std::pair(kUp, 0U), {kUp, 2U}, {kDown, 0U}, {kDown, 1U}, {kDown, 2U}}) {
        EXPECT_TRUE(switcher.keyDown(keyCode));
        EXPECT_EQ(switcher.selectedIndex(), index);
    }
    EXPECT_FALSE(switcher.keyDown(kA));
    switcher.keyDown(kReturn);
    switcher.setQuery("desk");
    EXPECT_EQ(switcher.selectedIndex(), 0U);
    switcher.keyDown(kEnter);
    switcher.keyDown(kEscape);
    EXPECT_EQ(went_, (Texts{"S3", "closed", "S1", "closed", "closed"}));
}

TEST_F(QuickSwitcherTest, RowsReadAsOneLine) {
    const auto all = rows();
    EXPECT_EQ(QuickSwitcher::title(all[4]), "ÉCOLE 3rd");
    EXPECT_EQ(QuickSwitcher::title(all[1]), "(untagged)");
    EXPECT_EQ(QuickSwitcher::accessibilityLabel(all[0]), "Work Notes, Desktop 1");
    EXPECT_EQ(QuickSwitcher::accessibilityLabel(all[1]), "Untagged, Desktop 2, current Space");
}

class QuickSwitcherPanelTest : public InterfaceTest {};

TEST_F(QuickSwitcherPanelTest, OpensOnTheCurrentSpaceAndGoesToTagsAndSpaces) {
    const auto open = [this]() -> QuickSwitcher& {
        panels_.showQuickSwitcher();
        return *std::get<QuickSwitcher*>(host_.titled("Jump to Space")->content);
    };
    auto* switcher = &open();
    EXPECT_EQ(switcher->filteredRows().size(), 3U);
    switcher->moveSelection(1);
    switcher->activateSelected();
    wait(2);
    EXPECT_EQ(identifier_.currentSpaceUUID(), "B");
    EXPECT_FALSE(host_.titled("Jump to Space") && host_.titled("Jump to Space")->visible);
    switcher = &open();
    EXPECT_EQ(switcher->selectedIndex(), 1U);
    switcher->setQuery("code");
    switcher->activateSelected();
    wait(2);
    EXPECT_EQ(identifier_.currentSpaceUUID(), "C");
}

}  // namespace
}  // namespace orvellos
