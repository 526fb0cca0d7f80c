#include "orvellos/windows/TagManager.h"

#include <fmt/format.h>

#include "tests/support/ManagerTest.h"

namespace orvellos {
namespace {

using platform::ManagedSpaceId;
using platform::Rect;
using platform::SessionEvent;
namespace key = platform::key;

class TagManagerTest : public ManagerTest {
  protected:
    // The lines of the timeline from the one that starts so on, without the lines about each tag.
    static Texts messagesFrom(std::string_view start) {
        auto lines = messages();
        lines.erase(lines.begin(),
                    std::ranges::find_if(lines, [&](const auto& line) { return line.starts_with(start); }));
        std::erase_if(lines, [](const auto& line) {
            return line.starts_with("  ") || line.starts_with("KEY: ") || line.starts_with("homeTarget") ||
                   line.starts_with("preferred") || line.starts_with("applySize");
        });
        return lines;
    }
    void setMissionControl(bool open) {
        desktop_.overview.setOpen(open);
        wait(0.4);
    }
    // Alphas of the first tag's window and its backup.
    std::pair<double, double> alphas() { return {seen(0).alpha, seen(backup(0)).alpha}; }
    bool isSeen() { return alphas() == std::pair(1.0, 0.0); }
    bool isSeenBig() { return alphas() == std::pair(0.0, 1.0); }
    bool isHidden() { return alphas() == std::pair(0.0, 0.0); }
    // Hidden, each on its Space, and nothing happens any more.
    void expectRest() {
        EXPECT_TRUE(isHidden());
        EXPECT_EQ(spacesOf(window(0)), std::vector{ManagedSpaceId{1}});
        EXPECT_EQ(spacesOf(window(1)), std::vector{ManagedSpaceId{3}});
        connectLog(false);
        wait(60);
        EXPECT_EQ(messages(), Texts{});
    }
    void hideDuringWork() {
        settings_.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
        start();
    }
};

TEST_F(TagManagerTest, PinsEveryWindowAndItsBackupToTheTagsSpace) {
    start();
    const ManagedSpaceId expected[] = {{1}, {3}};
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(spacesOf(window(i)), std::vector{expected[i]});
        EXPECT_EQ(spacesOf(backup(i)), std::vector{expected[i]});
        EXPECT_TRUE(seen(i).orderedIn);
        EXPECT_EQ(seen(i).alpha, 1);
        EXPECT_EQ(seen(backup(i)).alpha, 0);
    }
    EXPECT_EQ(seen(0).frame, seen(1).frame) << "both are at the shared position";
    EXPECT_EQ(manager_.activeTagID(), tag(0).id);
}

TEST_F(TagManagerTest, FollowsABurstOfSpaceChangesOnce) {
    start();
    desktop_.spaces.putWindow(window(0).windowNumber(), {{2}});
    desktop_.spaces.setCurrentSpace("C");
    wait(0.05);
    desktop_.spaces.notifyActiveSpaceChanged();
    connectLog(false);
    wait(0.079);
    EXPECT_EQ(spacesOf(window(0)), std::vector{ManagedSpaceId{2}});
    wait(0.01);
    EXPECT_EQ(spacesOf(window(0)).back(), ManagedSpaceId{1});
    EXPECT_EQ(std::ranges::count_if(messages(), [](const auto& line) { return line.starts_with("drift["); }),
              1);
    EXPECT_EQ(manager_.activeTagID(), tag(1).id);
    for (int i = 0; i < 1000; ++i) desktop_.spaces.notifyActiveSpaceChanged();
    wait(1);
    EXPECT_TRUE(isSeen());
}

TEST_F(TagManagerTest, KeepsATagOutOfSightWhoseSpaceIsGoneAndBringsItBack) {
    store_.updateSpaceUUID(tag(1).id, "gone");
    start();
    EXPECT_FALSE(seen(1).orderedIn);
    EXPECT_TRUE(seen(0).orderedIn);
    desktop_.spaces.addSpace("gone");
    desktop_.spaces.notifyActiveSpaceChanged();
    settle();
    EXPECT_TRUE(seen(1).orderedIn);
    EXPECT_EQ(seen(1).alpha, 1);
    EXPECT_EQ(spacesOf(window(1)), std::vector{ManagedSpaceId{4}});
    desktop_.spaces.removeSpace("gone");
    settings_.killSwitchActive.set(true);
    desktop_.spaces.notifyActiveSpaceChanged();
    settle();
    EXPECT_EQ(seen(1).alpha, 0);
    EXPECT_EQ(tag(1).spaceUUID, "gone") << "the binding is kept";
}

TEST_F(TagManagerTest, ShowsNothingOnAWrongSpaceWhileTheLayoutIsUnknown) {
    desktop_.spaces.setAnswering(false);
    start();
    EXPECT_FALSE(seen(0).orderedIn);
    EXPECT_FALSE(seen(1).orderedIn);
    desktop_.spaces.setAnswering(true);
    desktop_.spaces.notifyActiveSpaceChanged();
    settle();
    EXPECT_TRUE(seen(0).orderedIn);
    EXPECT_EQ(spacesOf(window(0)), std::vector{ManagedSpaceId{1}});
}

TEST_F(TagManagerTest, DecidesWhatIsSeen) {
    start();
    struct Case {
        const char* name;
        bool kill, embiggen, editing, peek, missionControl;
        TagVisibilityMode mode;
        double main, backup;
    };
    using enum TagVisibilityMode;
    const Case cases[] = {
        {"always visible", false, false, false, false, false, AlwaysVisible, 1, 0},
        {"hidden during work", false, false, false, false, false, HiddenDuringWork, 0, 0},
        {"but for Mission Control", false, false, false, false, true, HiddenDuringWork, 0, 1},
        {"and a peek", false, false, false, true, false, HiddenDuringWork, 1, 0},
        {"and editing", false, false, true, false, false, HiddenDuringWork, 1, 0},
        {"embiggened through the backups", false, true, false, false, false, HiddenDuringWork, 0, 1},
        {"the kill switch hides whatever else holds", true, true, true, true, true, AlwaysVisible, 0, 0},
        {"and back", false, false, false, false, false, AlwaysVisible, 1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        setMissionControl(c.missionControl);
        settings_.killSwitchActive.set(c.kill);
        settings_.embiggenAllTags.set(c.embiggen);
        c.editing ? editing_.begin("settings") : editing_.end("settings");
        settings_.visibilityMode.set(c.mode);
        if (c.peek) manager_.peekBegin();
        wait(2);
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(seen(i).alpha, c.main);
            EXPECT_EQ(seen(backup(i)).alpha, c.backup);
            EXPECT_EQ(window(i).ignoresMouseEvents() && c.main == 0, c.main == 0);
        }
        manager_.peekEnd();
        wait(2);
    }
}

TEST_F(TagManagerTest, HidesFromItsFirstMomentWhatIsNotToBeSeen) {
    settings_.killSwitchActive.set(true);
    store_.updateSpaceUUID(tag(1).id, "gone");
    manager_.start();
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(seen(i).alpha, 0);
        EXPECT_TRUE(seen(i).ignoresMouseEvents);
    }
    EXPECT_TRUE(seen(0).orderedIn);
    EXPECT_FALSE(seen(1).orderedIn);
    const Tag made = manager_.createTag("New", "#EF4444");
    EXPECT_EQ(seen(2).alpha, 0);
    manager_.deleteTag(made.id);
    manager_.restoreTag(made);
    EXPECT_EQ(seen(2).alpha, 0);
}

TEST_F(TagManagerTest, FollowsTheLastOfSeveralDecisionsOfOneMoment) {
    start();
    settings_.killSwitchActive.set(true);
    settings_.killSwitchActive.set(false);
    settle();
    EXPECT_EQ(seen(0).alpha, 1);
    settings_.killSwitchActive.set(true);
    settle();
    settings_.killSwitchActive.set(false);
    wait(0.001);
    settings_.killSwitchActive.set(true);
    settle();
    EXPECT_EQ(seen(0).alpha, 0);
    EXPECT_TRUE(seen(0).ignoresMouseEvents);

    const auto screens = desktop_.screens.screens();
    const Rect home = seen(0).frame;
    desktop_.screens.setScreens({{platform::DisplayId{1}, {0, 0, 800, 600}, {0, 0, 800, 600}, 1}});
    desktop_.screens.setScreens(screens);
    settle();
    EXPECT_EQ(seen(0).frame, home);
}

TEST_F(TagManagerTest, GlancesAfterASpaceSwitchInHiddenModeOnly) {
    hideDuringWork();
    EXPECT_TRUE(isHidden());
    struct Row {
        const char* name;
        bool reveal, kill, missionControl;
        std::pair<double, double> seen;
    };
    const Row rows[] = {{"a glance", true, false, false, {1, 0}},
                        {"which is switched off", false, false, false, {0, 0}},
                        {"not while sharing", true, true, false, {0, 0}},
                        {"nor in Mission Control", true, false, true, {0, 1}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        settings_.showRevealOnSwipe.set(row.reveal);
        settings_.killSwitchActive.set(row.kill);
        setMissionControl(row.missionControl);
        desktop_.spaces.notifyActiveSpaceChanged();
        wait(0);
        EXPECT_EQ(alphas(), row.seen) << "at once";
        wait(0.249);
        EXPECT_EQ(alphas(), row.seen);
        wait(0.3);
        EXPECT_EQ(alphas(), row.missionControl ? row.seen : std::pair(0.0, 0.0));
    }
    setMissionControl(false);
    settle();
    for (const auto& [code, flags, seen] : {std::tuple(key::kRightArrow, platform::modifier::kControl, true),
                                            {key::kRightArrow, std::uint64_t{0}, false}}) {
        desktop_.keyboard.press(code, flags);
        wait(0.1);
        EXPECT_EQ(isSeen(), seen) << "before the switch itself";
        wait(0.6);
    }
}

TEST_F(TagManagerTest, NamesHowARevealFindsATag) {
    hideDuringWork();
    const auto reveal = [&] {
        connectLog(false);
        desktop_.spaces.notifyActiveSpaceChanged();
        wait(0);
        const auto lines = messages();
        return *std::ranges::find_if(lines, [](const auto& line) { return line.starts_with("reveal '"); });
    };
    const auto name = redactedLabel("Mail");
    EXPECT_EQ(reveal(), "reveal '" + name + "': instant fresh onSpace=Y occ=hidden");
    EXPECT_EQ(reveal(), "reveal '" + name + "': instant reforce@1 onSpace=Y occ=vis");
    wait(0.25 + 0.125 + 0.001);
    const auto half = fmt::format("{:.2f}", window(0).alphaValue());
    EXPECT_EQ(reveal(), "reveal '" + name + "': instant cancel-fade@" + half + " onSpace=Y occ=vis");
    EXPECT_TRUE(isSeen());
}

TEST_F(TagManagerTest, ShowsTagsThroughoutASwipe) {
    hideDuringWork();
    const std::vector many(21, desktop_.overview.dockWindow(20, 30, 30));
    desktop_.overview.windows = many;
    wait(3);
    EXPECT_TRUE(isSeen());
    desktop_.overview.windows->clear();
    wait(0.2);
    EXPECT_TRUE(isSeen());
    wait(0.5);
    EXPECT_TRUE(isHidden());
}

TEST_F(TagManagerTest, ShowsBigTagsInMissionControlAndEndsEmbiggeningWithIt) {
    hideDuringWork();
    setMissionControl(true);
    EXPECT_TRUE(isSeenBig());
    settings_.embiggenAllTags.set(true);
    setMissionControl(false);
    EXPECT_FALSE(settings_.embiggenAllTags.get());
    settle();
    EXPECT_TRUE(isHidden());
    EXPECT_TRUE(hasLogged("SINK: observer.isActive → true"));
}

TEST_F(TagManagerTest, PreparesForMissionControlWhenItsKeyIsPressed) {
    hideDuringWork();
    desktop_.keyboard.press(key::kMissionControl);
    wait(0.001);
    EXPECT_TRUE(isSeenBig());
    desktop_.keyboard.press(key::kMissionControl);
    wait(0.148);
    EXPECT_TRUE(isSeenBig());
    wait(0.3);
    EXPECT_TRUE(isHidden()) << "it never opened";
    const auto lines = messagesFrom("PRE-TRIGGER");
    const std::string decided =
        "reconcile: mode=hiddenDuringWork kill=false transientReveal=false editing=false mcActive=true "
        "embiggen=false orphaned=0";
    EXPECT_EQ(
        Texts(lines.begin(), lines.begin() + 6),
        (Texts{"PRE-TRIGGER[keystroke]: setting MC=true + applyEffectiveSize",
               "applyEffectiveSize: mcActive=true embiggen=false transient=false", "applyEffectiveSize: done",
               decided, "PRE-TRIGGER[keystroke]: done", "PRE-TRIGGER[keystroke]: skip (MC already active)"}));
    EXPECT_EQ(lines.at(6), "SAFETY-REVERT[keystroke]: MC never opened in 150ms");

    desktop_.keyboard.press(key::kMissionControl);
    wait(0.1);
    setMissionControl(true);
    EXPECT_TRUE(isSeenBig()) << "it opened in time";
    setMissionControl(false);
    desktop_.spaces.notifyActiveSpaceChanged();
    wait(0.9);
    desktop_.keyboard.press(key::kMissionControl);
    wait(0.05);
    EXPECT_TRUE(isHidden()) << "a Space switch looks like it";
}

TEST_F(TagManagerTest, OpensMissionControlWithBigTags) {
    hideDuringWork();
    for (const bool opens : {true, false}) {
        desktop_.applications.urls["com.apple.exposelauncher"] = "launcher";
        desktop_.applications.opened.clear();
        manager_.openMCBig();
        EXPECT_TRUE(isSeenBig());
        wait(0.039);
        EXPECT_TRUE(desktop_.applications.opened.empty()) << "the tags come first";
        wait(0.002);
        EXPECT_EQ(desktop_.applications.opened, Texts{"launcher"});
        if (opens) setMissionControl(true);
        wait(opens ? 5 : 1.9);
        EXPECT_TRUE(isSeenBig());
        setMissionControl(false);
        wait(1);
        EXPECT_TRUE(isHidden());
        EXPECT_FALSE(settings_.embiggenAllTags.get());
    }
    EXPECT_TRUE(hasLogged("openMCBig: SAFETY-REVERT (MC never opened)"));
    desktop_.applications.openError = "broken";
    manager_.openMCBig();
    wait(1);
    EXPECT_TRUE(hasLogged("launchMissionControl: open failed: broken"));
    desktop_.applications.urls.clear();
    manager_.openMCBig();
    wait(1);
    EXPECT_TRUE(hasLogged("launchMissionControl: no URL for com.apple.exposelauncher"));
}

TEST_F(TagManagerTest, ThePeekKeyOnlyLogsWhileSharing) {
    hideDuringWork();
    settings_.killSwitchActive.set(true);
    wait(0.1);
    connectLog(false);
    manager_.peekBegin();
    manager_.peekEnd();
    EXPECT_EQ(messages(), Texts{"peek: suppressed (kill switch active)"});
}

TEST_F(TagManagerTest, LosesNothingInBadWeatherAndComesToRest) {
    hideDuringWork();
    const auto tags = store_.tags();
    struct Row {
        const char* name;
        std::function<void()> weather;
    };
    const Row rows[] = {
        {"a window manager replaced during a locked reveal",
         [&] {
             manager_.peekBegin();
             desktop_.spaces.setAnswering(false);
             desktop_.spaces.notifyActiveSpaceChanged();
             wait(2);
             EXPECT_TRUE(isSeen()) << "it lasts while the key is held";
             desktop_.spaces.setAnswering(true);
             desktop_.spaces.notifyActiveSpaceChanged();
         }},
        {"the clock set back by an hour during a reveal",
         [&] {
             manager_.peekBegin();
             desktop_.runLoop.setWallNow(desktop_.runLoop.wallNow() - std::chrono::hours(1));
             wait(1);
             manager_.peekEnd();
         }},
        {"Spaces that come and go in Mission Control",
         [&] {
             setMissionControl(true);
             desktop_.spaces.addSpace("D");
             desktop_.spaces.removeSpace("B");
             wait(3);
             EXPECT_TRUE(isSeenBig());
             desktop_.spaces.removeSpace("D");
             setMissionControl(false);
         }},
        {"a thousand switches in a second",
         [&] {
             for (int i = 0; i < 1000; ++i) {
                 desktop_.spaces.setCurrentSpace(i % 2 == 0 ? "C" : "A");
                 wait(0.001);
             }
         }},
        {"screens that come and go",
         [&] {
             const auto screens = desktop_.screens.screens();
             for (int i = 0; i < 10; ++i) {
                 desktop_.screens.setScreens({});
                 desktop_.screens.setScreens(screens);
             }
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        row.weather();
        wait(12);
        EXPECT_EQ(store_.tags(), tags);
        expectRest();
    }
}

TEST_F(TagManagerTest, RestsWhileNobodyLooks) {
    struct Row {
        SessionEvent event;
        bool onConsole;
        std::string line;
        bool polls;
    };
    const Row rows[] = {
        {SessionEvent::SessionDidResignActive, false, "session resigned active → pausing MC poll", false},
        {SessionEvent::ScreensDidWake, false, "", false},
        {SessionEvent::SessionDidBecomeActive, true, "session became active → resuming MC poll", true},
        {SessionEvent::ScreensDidSleep, true, "NSWorkspaceScreensDidSleepNotification → pausing polling",
         false},
        {SessionEvent::ScreensDidWake, true, "NSWorkspaceScreensDidWakeNotification → resuming polling",
         true},
        {SessionEvent::WillSleep, true, "NSWorkspaceWillSleepNotification → pausing polling", false},
        {SessionEvent::DidWake, true, "NSWorkspaceDidWakeNotification → resuming polling", true}};
    start();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        desktop_.session.onConsole = row.onConsole;
        connectLog(false);
        desktop_.session.send(row.event);
        if (!row.line.empty()) {
            EXPECT_EQ(messages().front(), row.line);
        }
        const int before = desktop_.overview.reads;
        wait(1);
        EXPECT_EQ(desktop_.overview.reads > before, row.polls);
        EXPECT_EQ(desktop_.runLoop.pendingTimers(), row.polls ? 2U : 0U);
    }
}

TEST_F(TagManagerTest, LeavesThePointerAloneWhereTagsTakeTheirOwnClicksOnly) {
    desktop_.windowSystem.hasOutlines = true;
    start();
    wait(1);
    EXPECT_FALSE(seen(1).ignoresMouseEvents) << "wherever the pointer is";
    EXPECT_EQ(desktop_.runLoop.pendingTimers(), 1U) << "that of the overview";
}

TEST_F(TagManagerTest, DoesNotPollFromTheStartAwayFromTheConsole) {
    desktop_.session.onConsole = false;
    start();
    const int before = desktop_.overview.reads;
    wait(1);
    EXPECT_EQ(desktop_.overview.reads, before);
    EXPECT_TRUE(hasLogged("session not on console at launch → MC poll paused"));
}

TEST_F(TagManagerTest, MakesATagOnTheCurrentSpace) {
    start();
    desktop_.spaces.setCurrentSpace("B");
    const Tag tag = manager_.createTag("New", "#EF4444");
    EXPECT_EQ(tag.spaceUUID, "B");
    EXPECT_EQ(manager_.createTag("Other", "#EF4444", "C").spaceUUID, "C");
    settle();
    EXPECT_EQ(spacesOf(window(2)), std::vector{ManagedSpaceId{2}});
    EXPECT_EQ(spacesOf(backup(2)), std::vector{ManagedSpaceId{2}});
    EXPECT_TRUE(seen(2).orderedIn && seen(backup(2)).orderedIn);
    EXPECT_EQ(manager_.activeTagID(), tag.id);
    EXPECT_EQ(manager_.tagIDForCurrentSpace(), tag.id);
    EXPECT_EQ(TagStore(desktop_.files, desktop_.runLoop, "/data").tags(), store_.tags());
}

TEST_F(TagManagerTest, AssignsATagToAnotherSpace) {
    store_.updateSpaceUUID(tag(1).id, "gone");
    start();
    int changes = 0;
    const auto subscription = manager_.subscribe([&] { ++changes; });
    for (const std::size_t i : {0U, 1U}) {
        manager_.assignTagToSpace(tag(i).id, "B");
        settle();
        EXPECT_EQ(tag(i).spaceUUID, "B");
        EXPECT_EQ(spacesOf(window(i)), std::vector{ManagedSpaceId{2}});
        EXPECT_EQ(spacesOf(backup(i)), std::vector{ManagedSpaceId{2}});
        EXPECT_TRUE(seen(i).orderedIn && seen(backup(i)).orderedIn);
        EXPECT_EQ(seen(i).alpha, 1);
    }
    EXPECT_GE(changes, 2);
    manager_.assignTagToSpace(tag(0).id);
    EXPECT_EQ(tag(0).spaceUUID, "A") << "the current one";
    manager_.assignTagToSpace(TagID::random(), "C");
}

TEST_F(TagManagerTest, DeletesATagUntilThatIsTakenBack) {
    start();
    std::string message;
    std::function<void()> undo;
    manager_.showUndoToast = [&](const std::string& text, std::function<void()> action) {
        message = text;
        undo = std::move(action);
    };
    const Tag mail = tag(0);
    const auto windows = desktop_.windowSystem.windows.size();
    manager_.deleteTag(mail.id);
    manager_.deleteTag(mail.id);
    EXPECT_EQ(message, "Deleted “Mail”");
    EXPECT_EQ(manager_.windowFor(mail.id), nullptr);
    EXPECT_EQ(desktop_.windowSystem.windows.size(), windows - 2);
    EXPECT_EQ(store_.tags().size(), 1U);
    undo();
    undo();
    settle();
    ASSERT_EQ(store_.tags().size(), 2U);
    EXPECT_EQ(tag(1), mail);
    EXPECT_EQ(spacesOf(window(1)), std::vector{ManagedSpaceId{1}});
    EXPECT_TRUE(seen(1).orderedIn);

    desktop_.spaces.removeSpace("A");
    settle();
    manager_.deleteTag(mail.id);
    desktop_.spaces.setCurrentSpace("C");
    settle();
    undo();
    EXPECT_FALSE(seen(1).orderedIn || seen(backup(1)).orderedIn) << "its Space is nowhere";
    desktop_.spaces.addSpace("A");
    settle();
    EXPECT_TRUE(seen(1).orderedIn);
    EXPECT_EQ(seen(1).alpha, 1);
}

TEST_F(TagManagerTest, UpdatesATagInPlace) {
    start();
    manager_.updateTag(tag(0).id, "A longer label than before", "#000000");
    EXPECT_EQ(tag(0).label, "A longer label than before");
    EXPECT_EQ(seen(0).title, tag(0).label);
    EXPECT_EQ(seen(backup(0)).title, tag(0).label);
    manager_.updateTag(TagID::random(), "x", "y");
}

TEST_F(TagManagerTest, ListsSpacesAndTagsForTheMenu) {
    store_.add({TagID::random(), "Loose", "", {}, {}});
    store_.add({TagID::random(), "Second on A", "", {}, "A"});
    start();
    const auto rows = manager_.menuRows([] { return Texts{"C", "B", "A"}; });
    EXPECT_EQ(rows, (std::vector<MenuSpaceRow>{
                        {"C", 1, tag(1), false}, {"B", 2, std::nullopt, false}, {"A", 3, tag(0), true}}));
    EXPECT_TRUE(manager_.menuRows([] { return Texts(); }).empty());
    Texts sorted;
    for (const auto& each : manager_.tagsSortedBySpaceOrder(Texts{"C", "B"})) sorted.push_back(each.label);
    EXPECT_EQ(sorted, (Texts{"Code", "Mail", "Loose", "Second on A"}));
    desktop_.spaces.setAnswering(false);
    EXPECT_FALSE(manager_.menuRows([] { return Texts{"A"}; }).front().isActive);
    EXPECT_EQ(manager_.tagIDForCurrentSpace(), manager_.activeTagID());
}

TEST_F(TagManagerTest, LeavesNoWorkBehindWhenStopped) {
    start();
    settings_.killSwitchActive.set(true);
    manager_.openMCBig();
    manager_.peekBegin();
    desktop_.spaces.notifyActiveSpaceChanged();
    manager_.stop();
    wait(1);
    EXPECT_EQ(desktop_.runLoop.pendingTimers(), 0U);
    desktop_.spaces.setCurrentSpace("B");
    desktop_.keyboard.press(key::kMissionControl);
    desktop_.session.send(SessionEvent::DidWake);
    wait(1);
    EXPECT_EQ(desktop_.runLoop.pendingTimers(), 0U);
    EXPECT_TRUE(desktop_.applications.opened.empty());
}

}  // namespace
}  // namespace orvellos
