#include "orvellos/spaces/NavController.h"

#include "tests/support/ManagerTest.h"

namespace orvellos {
namespace {

using platform::KeyEvent;
using platform::seconds;
using platform::simulated::SimulatedChildProcesses;

// The Spaces A to E, of which A is current. No way of switching does anything unless a test says so.
class NavControllerTest : public ApplicationTest, protected NavigatedTags {
  protected:
    NavControllerTest() {
        desktop_.screens.addScreen({0, 0, 1440, 900}, "one");
        desktop_.spaces.addDisplay("Main", {"A", "B", "C", "D", "E"});
        desktop_.spaces.setObeying(false);
        connectLog(true);
    }
    void wait(double time) { desktop_.runLoop.advance(seconds(time)); }
    std::vector<std::string> attempts() {
        std::vector<std::string> labels;
        for (const auto& line : logged())
            if (line.starts_with("  attempt: ")) labels.push_back(line.substr(11));
        return labels;
    }

    const std::vector<Tag>& tagsProvider() const override { return tags_; }
    void relocate() override {
        calls_.emplace_back("relocate");
        if (!movesTo_.empty()) tags_[0].spaceUUID = movesTo_;
    }
    void beginTransientReveal() override { calls_.emplace_back("reveal"); }

    std::vector<Tag> tags_ = {{TagID::random(), "Mail", "#3B82F6", {}, "C"},
                              {TagID::random(), "Free", "#3B82F6", {}, {}},
                              {TagID::random(), "Gone", "#3B82F6", {}, "X"}};
    Texts calls_;
    std::string movesTo_;  // where the first tag is found to be when the tags are pinned
    NavController nav_{identifier_, desktop_.runLoop, settings_, navServices(), *this};
};

TEST_F(NavControllerTest, GoesByTheFirstWayThatArrives) {
    struct Row {
        const char* name;
        double arrives;  // seconds after the start
        Texts attempts;
    };
    for (const Row& row :
         {Row{"the script", 0.68, {"osascript"}}, Row{"the keys", 0.70, {"osascript", "CGEvent"}},
          Row{"the call", 1.40, {"osascript", "CGEvent", "CGS switchToSpace"}}}) {
        SCOPED_TRACE(row.name);
        desktop_.spaces.setCurrentSpace("A");
        connectLog(true);
        EXPECT_TRUE(nav_.navigateToTagID(tags_[0].id));
        wait(row.arrives);
        desktop_.spaces.setCurrentSpace("C");
        wait(3);
        EXPECT_EQ(attempts(), row.attempts);
        EXPECT_EQ(logged().back(), "  " + row.attempts.back() + " reached target ✓");
        EXPECT_TRUE(desktop_.alerts.shown.empty());
    }
    EXPECT_EQ(
        desktop_.childProcesses.runs().front(),
        (SimulatedChildProcesses::Run{
            "/usr/bin/osascript",
            {"-e",
             "tell application \"System Events\"\n    repeat 2 times\n        key code 124 using {control "
             "down}\n        delay 0.2\n    end repeat\nend tell"}}));
}

TEST_F(NavControllerTest, GoesWhereTheTagWasWhenItBegan) {
    movesTo_ = "D";
    nav_.navigateToTagID(tags_[0].id);
    desktop_.spaces.setCurrentSpace("C");
    wait(1);
    EXPECT_EQ(attempts(), Texts{"osascript"});
    EXPECT_EQ(logged().back(), "  osascript reached target ✓");
}

TEST_F(NavControllerTest, SaysWhatItDoes) {
    EXPECT_TRUE(nav_.navigateToTagID(tags_[0].id));
    wait(3);
    EXPECT_EQ(logged(), (Texts{"navigate(toTagID): tag=Mail uuid=C",
                               "  delta=2 shortcutsOK=true accessibilityOK=true",
                               "  attempt: osascript",
                               "navigateViaOSAScript START uuid=C",
                               "  osascript: 2× key code 124 control-down",
                               "  osascript exit=0 stderr=stderr",
                               "  osascript did not reach target",
                               "  attempt: CGEvent",
                               "navigateViaKeyboard START uuid=C current=A",
                               R"(  ordered spaces (5): ["A", "B", "C", "D", "E"])",
                               "  currentIdx=0 targetIdx=2 delta=2",
                               "  posting 2× ⌃→ (keyCode=124) via CGEvent",
                               "  posted ⌃→ keyDown (nil source) to cghidEventTap",
                               "  posted ⌃→ keyUp (nil source) to cghidEventTap",
                               "  posted ⌃→ keyDown (nil source) to cghidEventTap",
                               "  posted ⌃→ keyUp (nil source) to cghidEventTap",
                               "  CGEvent did not reach target",
                               "  attempt: CGS switchToSpace",
                               "switchToSpace: display=Main target=3 prev=1",
                               "  called Show(3)",
                               "  called SetCurrent(3)",
                               "  called Hide(1)",
                               "  CGS switchToSpace did not reach target",
                               "  ALL paths failed — showing alert"}));
}

// What stands in the way of a jump, and what the alert says of it.
struct FailureRow {
    const char* name;
    std::map<int, bool> shortcuts;
    bool trusted;
    bool hasEntryPoint;
    std::string firstParagraph;
    Texts buttons;
    std::size_t attempts;
    std::vector<int> asked;
};

std::vector<FailureRow> failureRows() {
    const std::string off =
        "macOS's space shortcuts are turned off. Enable them in System Settings › Keyboard › Keyboard "
        "Shortcuts › Mission Control (“Move left/right a space”).";
    const std::string tried =
        "Tried simulating 2× ⌃→ (right) — macOS accepted the events but didn't change the Space. Something "
        "else is consuming them (Karabiner, BetterTouchTool, another accessibility app).";
    const std::string untrusted =
        "Accessibility permission isn't granted. CGEventPost can't inject keyboard events without it. Open "
        "Settings › Privacy & Security › Accessibility and enable orvellos.";
    const Texts ok = {"OK"};
    const Texts access = {"Open Accessibility Settings", "OK"};
    const Texts keyboard = {"Open Keyboard Shortcuts", "OK"};
    return {{"all is well", {}, true, true, tried, ok, 3, {79, 81}},
            {"not trusted", {{79, true}, {81, true}}, false, false, untrusted, access, 3, {79, 81}},
            {"left off", {{79, false}}, true, true, off, keyboard, 1, {79}},
            {"right off", {{81, false}}, true, false, off, keyboard, 1, {79, 81}},
            {"both", {{79, false}}, false, true, off, access, 1, {79}}};
}

TEST_F(NavControllerTest, SaysWhyNothingHelped) {
    for (const auto& row : failureRows()) {
        SCOPED_TRACE(row.name);
        connectLog(false);
        desktop_.alerts.shown.clear();
        desktop_.shortcuts.asked.clear();
        desktop_.shortcuts.enabled = row.shortcuts;
        desktop_.permissions.accessibilityTrusted = row.trusted;
        SpaceIdentifier spaces(desktop_.spaces, desktop_.spaces, desktop_.spaces, desktop_.screens);
        desktop_.spaces.entryPoints().clear();
        if (row.hasEntryPoint) desktop_.spaces.entryPoints().insert("SLSManagedDisplaySetCurrentSpace");
        NavController nav(spaces, desktop_.runLoop, settings_, navServices(), *this);
        EXPECT_TRUE(nav.navigateToTagID(tags_[0].id));
        EXPECT_EQ(desktop_.shortcuts.asked, row.asked);
        wait(5);
        EXPECT_EQ(attempts().size(), row.attempts);
        ASSERT_EQ(desktop_.alerts.shown.size(), 1U);
        const std::string second =
            row.hasEntryPoint
                ? "Also tried the CGS private-API path; it returned success but the Space didn't actually "
                  "change. This is a known macOS 26 issue with programmatic Space switching."
                : "The CGS private-API fallback also failed. Private symbols may not have resolved — check "
                  "the "
                  "console for “SkyLight bridge” log lines.";
        EXPECT_EQ(desktop_.alerts.shown[0],
                  (platform::Alert{"Couldn't switch to “Mail”", row.firstParagraph + "\n\n" + second,
                                   row.buttons}));
        desktop_.alerts.answer(0);
    }
    const std::string accessibility =
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
    const std::string keyboard = "x-apple.systempreferences:com.apple.Keyboard-Settings.extension";
    EXPECT_EQ(desktop_.urls.opened, (Texts{accessibility, keyboard, keyboard, accessibility}));
}

TEST_F(NavControllerTest, TellsOfTagsThatLeadNowhere) {
    EXPECT_FALSE(nav_.navigateToTagID(TagID::random()));
    EXPECT_TRUE(desktop_.alerts.shown.empty());
    EXPECT_FALSE(nav_.navigateToTagID(tags_[1].id));
    EXPECT_FALSE(nav_.navigateToTagID(tags_[2].id));
    EXPECT_EQ(
        desktop_.alerts.shown,
        (std::vector<platform::Alert>{
            {"No Space bound to this tag",
             "The “Free” tag hasn't been assigned to a Space yet. Use “Reassign … here” from the menu to "
             "bind it to the current Space.",
             {"OK"}},
            {"Target Space not found",
             "The Space that “Gone” was assigned to doesn't exist on this display anymore. It may have "
             "been closed, or it's on another monitor. Reassign it to the current Space from the menu to "
             "re-bind.",
             {"OK"}}}));
    EXPECT_TRUE(nav_.navigateToSpace("A")) << "already there";
    wait(3);
    EXPECT_TRUE(calls_.empty()) << "nothing has been started";
}

TEST_F(NavControllerTest, PinsTheTagsAndRevealsThemFirst) {
    for (const bool killed : {false, true})
        for (const bool reveals : {false, true}) {
            calls_.clear();
            settings_.killSwitchActive.set(killed);
            settings_.showRevealOnSwipe.set(reveals);
            nav_.navigateToSpace("B");
            EXPECT_EQ(calls_, reveals && !killed ? (Texts{"relocate", "reveal"}) : Texts{"relocate"});
        }
}

TEST_F(NavControllerTest, ASpaceOfAnotherDisplayIsCalledFor) {
    desktop_.screens.addScreen({1440, 0, 1440, 900}, "two");
    desktop_.spaces.displays().front().identifier = "one";
    desktop_.spaces.addDisplay("two", {"F", "G"});
    EXPECT_TRUE(nav_.navigateToSpace("G"));
    wait(0.94);
    EXPECT_EQ(attempts().size(), 3U) << "each way waits as for one step";
    EXPECT_EQ(std::ranges::count(logged(), "  FAIL: can't locate current or target in ordered list"), 2);
    EXPECT_EQ(desktop_.spaces.calls().at(1), "setCurrent two 7");
    wait(1);
    EXPECT_EQ(desktop_.alerts.shown.at(0).message, "Couldn't switch to that Space");
    EXPECT_TRUE(desktop_.alerts.shown[0].informativeText.starts_with("Tried simulating 1× ⌃← (left) — "));
}

TEST_F(NavControllerTest, ANewerSequenceOfKeysEndsTheOlder) {
    const KeyEvent right{124, platform::modifier::kControl};
    const KeyEvent left{123, platform::modifier::kControl};
    EXPECT_TRUE(nav_.navigateViaKeyboard("E"));
    wait(0.23);
    desktop_.spaces.setCurrentSpace("C");
    EXPECT_TRUE(nav_.navigateViaKeyboard("A"));
    wait(3);
    EXPECT_EQ(desktop_.shortcuts.pressed, (std::vector{right, right, left, left}));
    EXPECT_EQ(std::ranges::count(logged(), "  postSpaceKey: cancelled (superseded by a newer navigation)"),
              1);
    desktop_.shortcuts.canPost = false;
    connectLog(true);
    EXPECT_TRUE(nav_.navigateViaKeyboard("A"));
    EXPECT_EQ(logged().back(), "  FAIL: CGEvent keyDown creation returned nil");
    EXPECT_TRUE(nav_.navigateViaKeyboard("C"));
    EXPECT_EQ(logged().back(), "  already on target, no-op success");
}

TEST_F(NavControllerTest, HasEndedAsSoonAsItArrives) {
    nav_.navigateToSpace("C");
    wait(0.1);
    desktop_.spaces.setCurrentSpace("C");
    nav_.activeSpaceChanged();
    EXPECT_EQ(logged().back(), "  osascript reached target ✓");
    desktop_.spaces.setCurrentSpace("D");
    wait(3);
    EXPECT_EQ(attempts().size(), 1U) << "the user is not taken back";

    nav_.navigateToSpace("A");
    wait(1);
    desktop_.spaces.setCurrentSpace("A");
    nav_.activeSpaceChanged();
    wait(3);
    EXPECT_EQ(desktop_.shortcuts.pressed.size(), 1U) << "nor taken on";
}

TEST_F(NavControllerTest, EndsWithoutAWordWhenItIsCancelled) {
    desktop_.childProcesses.setExitStatus(std::nullopt);
    nav_.navigateToSpace("E");
    wait(0.5);
    EXPECT_EQ(logged().back(), "  FAIL: osascript launch threw there is no such program");
    nav_.cancel();
    wait(5);
    EXPECT_EQ(attempts().size(), 1U);
    EXPECT_TRUE(desktop_.alerts.shown.empty());
}

}  // namespace
}  // namespace orvellos
