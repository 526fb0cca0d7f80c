#include "orvellos/panels/EditTagsList.h"

#include "tests/support/InterfaceTest.h"

namespace orvellos {
namespace {

class EditTagsListTest : public InterfaceTest {
  protected:
    EditTagsListTest() { panels_.showEditPanel(); }
    EditTagsList& list() { return *std::get<EditTagsList*>(host_.titled("Edit Tag")->content); }
    Texts labels() {
        Texts labels;
        for (const auto& row : list().rows())
            labels.push_back(row.tag.label + (row.isActiveHere ? ", here" : "") +
                             (row.isSpaceMissing ? ", missing" : ""));
        return labels;
    }
};

TEST_F(EditTagsListTest, ShowsTheTagsInTheOrderOfTheirSpaces) {
    manager_.createTag("Between", "#123456", "B");
    EXPECT_EQ(labels(), (Texts{"Mail, here", "Between", "Code"}));
    int changes = 0;
    const auto subscription = list().subscribe([&] { ++changes; });
    desktop_.spaces.setCurrentSpace("B");
    wait(1);
    EXPECT_EQ(labels(), (Texts{"Mail", "Between, here", "Code"}));
    desktop_.spaces.removeSpace("A");
    desktop_.spaces.notifyActiveSpaceChanged();
    wait(1);
    EXPECT_EQ(labels(), (Texts{"Between, here", "Code", "Mail, missing"}));
    EXPECT_GE(changes, 2);
    list().reassign(tag(0).id);
    wait(1);
    EXPECT_EQ(tag(0).spaceUUID, "B") << "the current Space, and the warning is gone";
    EXPECT_EQ(labels(), (Texts{"Mail, here", "Between", "Code"}));
    EXPECT_EQ(list().countText(), "3");
}

TEST_F(EditTagsListTest, EditsOneRowAtATime) {
    list().edit(tag(0).id);
    list().edit(tag(1).id);
    EXPECT_EQ(list().editBuffer(), (EditTagsList::EditBuffer{tag(1).id, "Code", "#10B981"}));
    list().editBuffer()->label = " \n";
    EXPECT_FALSE(list().canSave());
    list().save();
    EXPECT_TRUE(list().editBuffer()) << "there is nothing to save";
    list().editBuffer()->label = "\n Work ";
    list().editBuffer()->colorHex = "#000000";
    list().save();
    EXPECT_FALSE(list().editBuffer());
    EXPECT_EQ(std::tie(tag(1).label, tag(1).colorHex), std::tuple("Work", "#000000"));
    list().edit(tag(0).id);
    list().editBuffer()->label = "other";
    list().cancelEdit();
    EXPECT_EQ(tag(0).label, "Mail");
    list().edit(tag(0).id);
    manager_.deleteTag(tag(0).id);
    EXPECT_FALSE(list().editBuffer()) << "its tag is gone";
    list().edit(TagID::random());
    EXPECT_FALSE(list().editBuffer());
}

TEST_F(EditTagsListTest, EveryTagShowsWhileItIsOpen) {
    settings_.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    settle();
    EXPECT_EQ(seen(0).alpha, 1);
    panels_.close(PanelKind::EditTags);
    settle();
    EXPECT_EQ(seen(0).alpha, 0);
}

TEST_F(EditTagsListTest, LeadsToOtherParts) {
    list().showSettings();
    EXPECT_TRUE(host_.titled("orvellos Settings"));
    drag(0, 50, 50, true);
    EXPECT_TRUE(tag(0).frame);
    list().alignAll(tag(1).id);
    EXPECT_FALSE(tag(0).frame);
    list().jump(tag(1).id);
    EXPECT_EQ(desktop_.childProcesses.runs().size(), 0U);
    wait(0.1);
    EXPECT_EQ(desktop_.childProcesses.runs().size(), 1U) << "on its way";
}

}  // namespace
}  // namespace orvellos
