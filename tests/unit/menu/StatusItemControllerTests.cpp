#include "orvellos/menu/StatusItemController.h"

#include "orvellos/base/ApplicationVersion.h"
#include "orvellos/settings/HotkeyNames.h"
#include "tests/support/InterfaceTest.h"

namespace orvellos {
namespace {

using platform::MenuItem;

// What a row says and can do, in one line: "✓" checked, "-" disabled, "alt" an alternate, then the title.
std::string describe(const MenuItem& item) {
    if (item.kind == MenuItem::Kind::Separator) return "—";
    return std::string(item.checked ? "✓ " : "") + (item.isAlternate ? "alt " : "") +
           (item.action ? "" : "- ") + item.title;
}

class StatusItemControllerTest : public InterfaceTest, ApplicationCommands {
  protected:
    Texts menu() {
        Texts rows;
        for (const auto& item : desktop_.statusItem.openMenu()) rows.push_back(describe(item));
        return rows;
    }
    // The rows above the first of the commands that are always there.
    Texts upperMenu() {
        auto rows = menu();
        rows.erase(std::ranges::find(rows, "Edit Tags…") - 1, rows.end());
        return rows;
    }
    MenuItem item(const std::string& title) {
        for (auto& each : desktop_.statusItem.openMenu())
            if (each.title == title) return each;
        ADD_FAILURE() << "no row " << title;
        return {};
    }
    void choose(const std::string& title) { item(title).action(); }

    void saveDiagnostics() override { done_.emplace_back("saveDiagnostics"); }
    void checkForUpdates() override { done_.emplace_back("checkForUpdates"); }
    void terminate() override { done_.emplace_back("terminate"); }

    Texts done_;
    StatusItemController controller_{statusItemServices(panels_, *this)};
};

TEST_F(StatusItemControllerTest, ListsEverythingInOrder) {
    EXPECT_EQ(menu(), (Texts{"Untag this Space",
                             "—",
                             "✓ Desktop 1: Mail",
                             "alt Reassign “Mail” here",
                             "Desktop 2",
                             "Desktop 3: Code",
                             "alt Reassign “Code” here",
                             "—",
                             "Edit Tags…",
                             "Jump to Space…",
                             "Hide Tags During Normal Work",
                             "Hide Tags for Screen-Sharing",
                             "Settings…",
                             "—",
                             "Check for Updates…",
                             "Save Diagnostics Report…",
                             "About orvellos",
                             "Quit orvellos",
                             "—",
                             "- " + applicationVersionText()}));
    EXPECT_EQ(item("Untag this Space").toolTip, "Remove the “Mail” tag");
    EXPECT_EQ(item("Desktop 2").toolTip, "Jump to untagged Desktop 2");
    EXPECT_TRUE(item("Desktop 2").hasFaintDot);
    EXPECT_EQ(item("Desktop 3: Code").toolTip, "Jump to this Space");
    EXPECT_EQ(item("Reassign “Code” here").dot, item("Desktop 3: Code").dot);
    EXPECT_EQ(menu().size(), 20U);
}

// What the user and the desktop have set, and the upper part of the menu that comes of it.
struct UpperMenuRow {
    const char* name;
    bool killed;
    bool hides;
    bool trusted;
    bool shortcut81;
    bool answers;  // the Space list can be read
    bool tagged;
    Texts menu;
};

std::vector<UpperMenuRow> upperMenuRows() {
    const std::string share = "Tags hidden for screen-share (⌃⌥⌘H) — click to show";
    const std::string peek = "Tags hidden during work — click to peek";
    const std::string grant = "⚠ Grant Accessibility to enable click-to-switch";
    const std::string enable = "⚠ Enable ⌃←/⌃→ to use click-to-switch";
    const std::string noSpaces = "- ⚠ Space detection unavailable on this macOS";
    const Texts jumps = {"Untag this Space",         "—",         "✓ Desktop 1: Mail",
                         "alt Reassign “Mail” here", "Desktop 2", "Desktop 3: Code",
                         "alt Reassign “Code” here"};
    const Texts noJumps = {"Untag this Space",         "—",           "✓ - Desktop 1: Mail",
                           "alt Reassign “Mail” here", "- Desktop 2", "- Desktop 3: Code",
                           "alt Reassign “Code” here"};
    const Texts bare = {"Tag this Space…", "—", "✓ Desktop 1", "Desktop 2", "Desktop 3"};
    const Texts lost = {noSpaces, "—", "Untag this Space", "—", "✓ Mail", "Code"};
    const Texts empty = {"Tag this Space…", "—", "- No tags yet"};
    const auto with = [](Texts rows, const Texts& more) {
        rows.insert(rows.end(), more.begin(), more.end());
        return rows;
    };
    return {{"hidden and killed", true, true, true, true, true, true, with({share, "—"}, jumps)},
            {"hidden", false, true, true, true, true, true, with({peek, "—"}, jumps)},
            {"not trusted", false, false, false, false, true, true, with({grant, "—"}, noJumps)},
            {"shortcut off", true, false, true, false, true, true, with({share, "—", enable, "—"}, noJumps)},
            {"no tags", true, true, true, true, true, false, bare},
            {"no Spaces", false, false, true, true, false, true, lost},
            {"neither", false, false, true, true, false, false, empty}};
}

TEST_F(StatusItemControllerTest, SaysWhatIsHiddenAndWhatStandsInTheWay) {
    for (const auto& row : upperMenuRows()) {
        SCOPED_TRACE(row.name);
        hotkeys_.create(hotkey::toggleKillSwitch);
        settings_.killSwitchActive.set(row.killed);
        settings_.visibilityMode.set(row.hides ? TagVisibilityMode::HiddenDuringWork
                                               : TagVisibilityMode::AlwaysVisible);
        desktop_.permissions.accessibilityTrusted = row.trusted;
        desktop_.shortcuts.enabled = {{81, row.shortcut81}};
        desktop_.spaces.setAnswering(row.answers);
        const auto tags = store_.tags();
        if (!row.tagged) setTags({});
        EXPECT_EQ(upperMenu(), row.menu);
        for (const auto& each : desktop_.statusItem.openMenu()) {
            const bool saysDisabled = each.toolTip == "Jump disabled — grant permissions above";
            EXPECT_EQ(saysDisabled, each.title.starts_with("Desktop") && !each.action) << each.title;
        }
        setTags(tags);
    }
}

TEST_F(StatusItemControllerTest, ItsRowsDoWhatTheySay) {
    choose("Untag this Space");
    EXPECT_EQ(store_.tags().size(), 1U);
    choose("Tag this Space…");
    EXPECT_TRUE(host_.titled("Tag This Space"));
    EXPECT_EQ(item("Tag this Space…").keyEquivalent,
              (platform::KeyEquivalent{'t', platform::modifier::kControl | platform::modifier::kOption |
                                                platform::modifier::kCommand}));
    const auto reassign = item("Reassign “Code” here").action;
    const auto jump = item("Desktop 3: Code").action;
    const auto jumpBare = item("Desktop 2").action;
    reassign();
    EXPECT_EQ(tag(0).spaceUUID, "A");
    setTags({});
    desktop_.spaces.removeSpace("B");
    jump();  // to a tag, and a Space, that are gone
    jumpBare();
    reassign();
    wait(2);
    EXPECT_EQ(desktop_.alerts.shown.at(0).message, "Couldn't switch to that Space");

    struct Row {
        const char* title;
        const char* panel;
    };
    for (const Row& row : {Row{"Edit Tags…", "Edit Tag"}, Row{"Jump to Space…", "Jump to Space"},
                           Row{"Settings…", "orvellos Settings"}, Row{"About orvellos", "About orvellos"}}) {
        choose(row.title);
        EXPECT_TRUE(host_.titled(row.panel)) << row.title;
    }
    choose("Check for Updates…");
    choose("Save Diagnostics Report…");
    choose("Quit orvellos");
    EXPECT_EQ(done_, (Texts{"checkForUpdates", "saveDiagnostics", "terminate"}));
    desktop_.permissions.accessibilityTrusted = false;
    choose("⚠ Grant Accessibility to enable click-to-switch");
    EXPECT_EQ(desktop_.urls.opened,
              Texts{"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
}

TEST_F(StatusItemControllerTest, HidesAndPeeks) {
    choose("Hide Tags During Normal Work");
    settle();
    EXPECT_TRUE(item("Hide Tags During Normal Work").checked);
    EXPECT_EQ(seen(0).alpha, 0);
    choose("Tags hidden during work — click to peek");
    wait(1.4);
    EXPECT_EQ(seen(0).alpha, 1);
    wait(1);
    EXPECT_EQ(seen(0).alpha, 0);
    choose("Hide Tags During Normal Work");
    EXPECT_EQ(settings_.visibilityMode.get(), TagVisibilityMode::AlwaysVisible);
    choose("Hide Tags for Screen-Sharing");
    EXPECT_TRUE(item("Hide Tags for Screen-Sharing").checked);
    choose("Tags hidden for screen-share — click to show");
    EXPECT_FALSE(settings_.killSwitchActive.get());
}

TEST_F(StatusItemControllerTest, TheTitleFollowsTheCurrentTagWhileTagsAreHidden) {
    const auto title = [&] {
        wait(0.3);
        const auto& now = desktop_.statusItem.title;
        return std::string(now.hasHiddenSymbol ? "hidden " : "") + (now.label ? now.label->text : "");
    };
    EXPECT_EQ(title(), "");
    settings_.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    EXPECT_EQ(title(), "Mail");
    manager_.updateTag(tag(0).id, "Post\n" + std::string(100, 'x'), "#10B981");
    EXPECT_EQ(title(), "Post " + std::string(54, 'x') + "…");
    desktop_.spaces.setCurrentSpace("C");
    EXPECT_EQ(title(), "Code");
    settings_.killSwitchActive.set(true);
    EXPECT_EQ(title(), "hidden Code");
    manager_.deleteTag(tag(1).id);
    EXPECT_TRUE(title().starts_with("hidden"));
}

TEST_F(StatusItemControllerTest, LabelsAreShortAndNeverInterpreted) {
    struct Row {
        std::string label;
        std::string shown;
    };
    for (const Row& row : {Row{"<b>&amp;</b>", "<b>&amp;</b>"}, Row{" \n\t", "   "}, Row{"שלום", "שלום"},
                           Row{std::string(10'000, 'x'), std::string(59, 'x') + "…"}}) {
        manager_.updateTag(tag(0).id, row.label, "#10B981");
        EXPECT_EQ(menu().at(2), "✓ Desktop 1: " + row.shown);
        EXPECT_EQ(menu().at(3), "alt Reassign “" + row.shown + "” here");
        EXPECT_EQ(item("Untag this Space").toolTip, "Remove the “" + row.shown + "” tag");
    }
}

}  // namespace
}  // namespace orvellos
