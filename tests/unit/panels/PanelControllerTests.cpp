#include "orvellos/panels/PanelController.h"

#include "orvellos/tags/TagColor.h"
#include "tests/support/InterfaceTest.h"

namespace orvellos {
namespace {

class PanelControllerTest : public InterfaceTest {
  protected:
    bool isOpen(const char* title) {
        wait(0.01);
        return host_.titled(title) != nullptr;
    }
    CreateTagForm& createForm() { return *std::get<CreateTagForm*>(host_.titled("Tag This Space")->content); }
};

TEST_F(PanelControllerTest, MakesEachPanelOnceAndShowsItAgain) {
    struct Row {
        const char* title = nullptr;
        std::function<void(PanelController&)> show = nullptr;
        platform::Size size;
        bool dismissed = false;  // by a click elsewhere
        const char* editing = nullptr;
    };
    for (const Row& row :
         {Row{"Edit Tag", [](auto& panels) { panels.showEditPanel(); }, {460, 0}, true, "edit-tags"},
          Row{"orvellos Settings",
              [](auto& panels) { panels.showSettingsPanel(); },
              {460, 640},
              true,
              "settings"},
          Row{"About orvellos", [](auto& panels) { panels.showAbout(); }, {320, 360}, false, nullptr},
          Row{"Welcome to orvellos",
              [](auto& panels) { panels.showWelcome(WelcomeForm::Mode::FirstRun); },
              {480, 0},
              false,
              nullptr},
          Row{"Jump to Space",
              [](auto& panels) { panels.showQuickSwitcher(); },
              {460, 360},
              true,
              nullptr}}) {
        SCOPED_TRACE(row.title);
        row.show(panels_);
        row.show(panels_);
        ASSERT_EQ(host_.panels.size(), 1U);
        const auto& panel = *host_.titled(row.title);
        EXPECT_EQ(panel.shell.contentSize, row.size);
        EXPECT_EQ(std::ranges::count(host_.shown, row.title), 2);
        EXPECT_EQ(editing_.sources(),
                  row.editing ? std::set<std::string>{row.editing} : std::set<std::string>());
        desktop_.mouse.pressElsewhere();
        EXPECT_EQ(isOpen(row.title), !row.dismissed);
        if (!row.dismissed) host_.titled(row.title)->close();
        EXPECT_FALSE(isOpen(row.title)) << "forgotten once it is closed";
        EXPECT_TRUE(editing_.sources().empty());
    }
}

TEST_F(PanelControllerTest, ClicksElsewhereDismissIt) {
    panels_.showAbout();
    const platform::WindowNumber about = host_.numberOf("About orvellos");
    struct Row {
        const char* name;
        std::function<platform::WindowNumber()> clicked;
        Texts log;
        bool dismissed;
    };
    for (const Row& row :
         {Row{"itself",
              [&] { return host_.numberOf("Edit Tag"); },
              {"localMonitor mouseDown in 'Edit Tag': window=Edit Tag", "  on panel → keep"},
              false},
          Row{"a tag",
              [&] { return window(0).windowNumber(); },
              {"localMonitor mouseDown in 'Edit Tag': window=", "  on TagWindow → keep (let tag toggle)"},
              false},
          Row{"another panel",
              [&] { return about; },
              {"localMonitor mouseDown in 'Edit Tag': window=About orvellos", "  on sibling panel → keep"},
              false},
          Row{"the status item",
              [] { return platform::WindowNumber{5000}; },
              {"localMonitor mouseDown in 'Edit Tag': window=nil", "  outside → dismiss",
               "autoDismiss FIRE for 'Edit Tag'"},
              true}}) {
        SCOPED_TRACE(row.name);
        panels_.showEditPanel();
        connectLog(false);
        desktop_.mouse.pressIn(row.clicked());
        EXPECT_EQ(logged(), row.log);
        EXPECT_EQ(isOpen("Edit Tag"), !row.dismissed);
    }
    panels_.showEditPanel();
    connectLog(false);
    panels_.close(PanelKind::EditTags);
    desktop_.mouse.pressElsewhere();
    EXPECT_EQ(logged(), Texts{"willCloseNotification for 'Edit Tag' — cleaning up monitors"});
}

TEST_F(PanelControllerTest, PickingAColorDismissesNothing) {
    panels_.showCreatePanel("A");
    host_.colorPanelVisible = true;
    connectLog(false);
    desktop_.mouse.pressElsewhere();
    host_.colorPanelVisible = false;
    wait(1.49);
    desktop_.mouse.pressElsewhere();
    desktop_.mouse.pressIn({5000});
    EXPECT_EQ(messages(), (Texts{"globalMonitor mouseDown but color panel active → keep (eyedropper)",
                                 "globalMonitor mouseDown but color panel active → keep (eyedropper)",
                                 "  color panel active → keep (eyedropper / color pick)"}));
    EXPECT_TRUE(isOpen("Tag This Space"));
    desktop_.mouse.pressElsewhere();
    EXPECT_FALSE(isOpen("Tag This Space")) << "1.5 s later";
}

TEST_F(PanelControllerTest, TogglesWhatATagOrAKeyOpens) {
    connectLog(false);
    panels_.toggleEditPanel();
    panels_.toggleEditPanel();
    wait(0.01);
    EXPECT_EQ(logged().at(0), "toggleEditPanel: editPanel=nil visible=false");
    EXPECT_EQ(logged().at(1), "  → present");
    EXPECT_EQ(std::ranges::count(logged(), "toggleEditPanel: editPanel=set visible=true"), 1);
    EXPECT_TRUE(host_.panels.empty());
    panels_.toggleCreatePanel("A");
    EXPECT_TRUE(isOpen("Tag This Space"));
    panels_.toggleCreatePanel("A");
    EXPECT_FALSE(isOpen("Tag This Space"));
}

TEST_F(PanelControllerTest, TheFormTagsTheSpaceItWasLastOpenedFor) {
    panels_.showCreatePanel("A");
    EXPECT_TRUE(std::ranges::count(tagPalette, createForm().colorHex, &PaletteColor::hex) == 1);
    panels_.showCreatePanel("B");
    struct Row {
        const char* name;
        const char* label;
        bool creates;
    };
    for (const Row& row : {Row{"nothing", "", false}, Row{"white space", " \n\t\u2003", false},
                           Row{"a label", " \n Home office\n", true}}) {
        createForm().label = row.label;
        createForm().colorHex = "#123456";
        EXPECT_EQ(createForm().canCreate(), row.creates) << row.name;
        createForm().submit();
        EXPECT_EQ(isOpen("Tag This Space"), !row.creates) << row.name;
    }
    ASSERT_EQ(store_.tags().size(), 3U);
    const auto& made = tag(2);
    EXPECT_EQ(std::tie(made.label, made.colorHex, *made.spaceUUID),
              std::tuple("Home office", "#123456", "B"));
    panels_.showCreatePanel("A");
    createForm().cancel();
    EXPECT_FALSE(isOpen("Tag This Space"));
}

}  // namespace
}  // namespace orvellos
