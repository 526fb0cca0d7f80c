#include "orvellos/TagManager.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDefaultsStore.h"
#include "platform/simulated/SimulatedFileSystem.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSpaces.h"
#include "platform/simulated/SimulatedWindowSystem.h"

namespace orvellos {
namespace {

using platform::ManagedSpaceId;
using platform::Rect;
using platform::seconds;
using platform::simulated::SimulatedWindow;

// A desktop of three Spaces, the first and the third of them tagged.
class TagManagerTest : public testing::Test {
  protected:
    TagManagerTest() {
        screens_.addScreen({0, 0, 1440, 900});
        spaces_.addDisplay("Main", {"A", "B", "C"});
        system_.isOnActiveSpace = [this](platform::WindowNumber window) {
            const auto on = spaces_.copySpacesForWindow(window);
            return on.empty() || on.front() == identifier_.currentManagedSpaceID();
        };
        system_.windowClosed = [this](platform::WindowNumber window) { spaces_.forgetWindow(window); };
        store_.tags = {{TagID::random(), "Mail", "#3B82F6", {}, "A"},
                       {TagID::random(), "Code", "#10B981", {}, "C"}};
    }

    void start() {
        manager_.start();
        loop_.advance(seconds(0.5));
    }
    TagWindow& window(std::size_t tag) { return *manager_.windowFor(store_.tags.at(tag).id); }
    SimulatedWindow& seen(std::size_t tag) { return system_.windows.at(window(tag).windowNumber()); }
    SimulatedWindow& seenBackup(std::size_t tag) {
        return system_.windows.at(window(tag).mcBackup()->windowNumber());
    }
    std::vector<ManagedSpaceId> spacesOf(const TagWindow& window) {
        return spaces_.copySpacesForWindow(window.windowNumber());
    }

    platform::simulated::SimulatedRunLoop loop_;
    platform::simulated::SimulatedScreens screens_{loop_};
    platform::simulated::SimulatedSpaces spaces_{loop_};
    platform::simulated::SimulatedWindowSystem system_;
    platform::simulated::SimulatedTextMeasurer measurer_;
    platform::simulated::SimulatedDefaultsStore defaults_;
    platform::simulated::SimulatedLoginItem loginItem_;
    platform::simulated::SimulatedFileSystem files_;
    Settings settings_{defaults_, loginItem_, std::nullopt};
    EditingContext editing_;
    SpaceIdentifier identifier_{spaces_, spaces_, spaces_, screens_, screens_};
    TagStore store_{files_, loop_, "/data"};
    TagManager manager_{{{system_, loop_, screens_, measurer_, settings_, editing_},
                         identifier_,
                         spaces_,
                         screens_,
                         screens_},
                        store_};
};

TEST_F(TagManagerTest, PinsEveryWindowAndItsBackupToTheTagsSpace) {
    start();
    const ManagedSpaceId expected[] = {{1}, {3}};
    for (std::size_t tag = 0; tag < 2; ++tag) {
        EXPECT_EQ(spacesOf(window(tag)), std::vector{expected[tag]});
        EXPECT_EQ(spacesOf(*window(tag).mcBackup()), std::vector{expected[tag]});
        EXPECT_TRUE(seen(tag).orderedIn);
        EXPECT_EQ(seen(tag).alpha, 1);
        EXPECT_EQ(seenBackup(tag).alpha, 0);
    }
    EXPECT_EQ(seen(0).frame, seen(1).frame) << "both are at the shared position";
}

TEST_F(TagManagerTest, PutsAWindowBackThatHasDrifted) {
    start();
    spaces_.putWindow(window(0).windowNumber(), {{2}});
    spaces_.setCurrentSpace("C");
    loop_.advance(seconds(0.079));
    EXPECT_EQ(spacesOf(window(0)), std::vector{ManagedSpaceId{2}}) << "a burst of changes is waited for";
    loop_.advance(seconds(0.01));
    EXPECT_NE(
        std::ranges::find(spaces_.calls(), "add " + std::to_string(window(0).windowNumber().value) + " to 1"),
        spaces_.calls().end());
}

TEST_F(TagManagerTest, KeepsATagOutOfSightWhoseSpaceIsGoneAndBringsItBack) {
    store_.tags[1].spaceUUID = "gone";
    start();
    EXPECT_FALSE(seen(1).orderedIn);
    EXPECT_TRUE(seen(0).orderedIn);
    spaces_.addSpace("gone");
    spaces_.notifyActiveSpaceChanged();
    loop_.advance(seconds(0.5));
    EXPECT_TRUE(seen(1).orderedIn);
    EXPECT_EQ(seen(1).alpha, 1);
    EXPECT_EQ(spacesOf(window(1)), std::vector{ManagedSpaceId{4}});
}

TEST_F(TagManagerTest, ShowsNothingOnAWrongSpaceWhileTheLayoutIsUnknown) {
    spaces_.setAnswering(false);
    start();
    EXPECT_FALSE(seen(0).orderedIn);
    EXPECT_FALSE(seen(1).orderedIn);
    spaces_.setAnswering(true);
    spaces_.notifyActiveSpaceChanged();
    loop_.advance(seconds(0.5));
    EXPECT_TRUE(seen(0).orderedIn);
    EXPECT_EQ(spacesOf(window(0)), std::vector{ManagedSpaceId{1}});
}

TEST_F(TagManagerTest, DecidesWhatIsSeen) {
    start();
    struct Case {
        const char* name;
        bool kill, embiggen, editing;
        TagVisibilityMode mode;
        double main, backup;
    };
    using enum TagVisibilityMode;
    const Case cases[] = {
        {"always visible", false, false, false, AlwaysVisible, 1, 0},
        {"hidden during work", false, false, false, HiddenDuringWork, 0, 0},
        {"editing shows hidden tags", false, false, true, HiddenDuringWork, 1, 0},
        {"embiggened through the backups", false, true, false, HiddenDuringWork, 0, 1},
        {"the kill switch hides even embiggened tags", true, true, true, AlwaysVisible, 0, 0},
        {"and back", false, false, false, AlwaysVisible, 1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        settings_.killSwitchActive.set(c.kill);
        settings_.embiggenAllTags.set(c.embiggen);
        c.editing ? editing_.begin("settings") : editing_.end("settings");
        settings_.visibilityMode.set(c.mode);
        loop_.advance(seconds(0.5));
        for (std::size_t tag = 0; tag < 2; ++tag) {
            EXPECT_EQ(seen(tag).alpha, c.main);
            EXPECT_EQ(seenBackup(tag).alpha, c.backup);
        }
    }
}

TEST_F(TagManagerTest, HidesFromTheFirstMomentWhatIsHiddenAtTheStart) {
    settings_.killSwitchActive.set(true);
    store_.tags[1].spaceUUID = "gone";
    manager_.start();
    for (std::size_t tag = 0; tag < 2; ++tag) {
        EXPECT_EQ(seen(tag).alpha, 0);
        EXPECT_TRUE(seen(tag).ignoresMouseEvents);
    }
    EXPECT_TRUE(seen(0).orderedIn);
    EXPECT_FALSE(seen(1).orderedIn);
}

TEST_F(TagManagerTest, FollowsTheLastOfSeveralDecisionsOfOneMoment) {
    start();
    settings_.killSwitchActive.set(true);
    settings_.killSwitchActive.set(false);
    loop_.advance(seconds(0.5));
    EXPECT_EQ(seen(0).alpha, 1);
    settings_.killSwitchActive.set(true);
    loop_.advance(seconds(0.5));
    settings_.killSwitchActive.set(false);
    settings_.killSwitchActive.set(true);
    loop_.advance(seconds(0.5));
    EXPECT_EQ(seen(0).alpha, 0);
    EXPECT_TRUE(seen(0).ignoresMouseEvents);

    const auto screens = screens_.screens();
    const Rect home = seen(0).frame;
    screens_.setScreens({{platform::DisplayId{1}, {0, 0, 800, 600}, {0, 0, 800, 600}, 1}});
    screens_.setScreens(screens);
    loop_.advance(seconds(0.5));
    EXPECT_EQ(seen(0).frame, home);
}

TEST_F(TagManagerTest, PlacesTheBackupForEachStyle) {
    start();
    const Rect main = seen(0).frame;
    settings_.missionControlStyle.set(MissionControlStyle::Fullscreen);
    EXPECT_EQ(seenBackup(0).frame, (Rect{0, 0, 1440, 900}));
    EXPECT_TRUE(seenBackup(0).layers.swatchLayer.hidden);
    settings_.missionControlStyle.set(MissionControlStyle::HeaderBar);
    EXPECT_EQ(seenBackup(0).frame, (Rect{0, 720, 1440, 180}));
    settings_.missionControlStyle.set(MissionControlStyle::Pill);
    EXPECT_EQ(seenBackup(0).frame.height, 240 + 40);
    EXPECT_FALSE(seenBackup(0).layers.swatchLayer.hidden);
    EXPECT_EQ(seen(0).frame, main);
}

TEST_F(TagManagerTest, FollowsTheSizeTheShapeAndTheScreens) {
    start();
    settings_.tagSize.set(TagSize::Large);
    loop_.advance(seconds(0.5));
    EXPECT_EQ(seen(0).frame.height, 100 + 40);
    const auto outline = seen(0).layers.tintLayer.path;
    settings_.globalTagShape.set(TagShape::Pill);
    EXPECT_NE(seen(0).layers.tintLayer.path, outline);
    screens_.setScreens({{platform::DisplayId{1}, {0, 0, 800, 600}, {0, 0, 800, 600}, 1}});
    loop_.advance(seconds(0.5));
    EXPECT_NEAR(seen(1).frame.midX(), 800 - 224, 1e-9);
    EXPECT_NEAR(seen(1).frame.midY(), 600 - 56, 1e-9);
}

TEST_F(TagManagerTest, LeavesNoWorkBehindWhenStopped) {
    start();
    manager_.stop();
    loop_.advance(seconds(1));
    EXPECT_EQ(loop_.pendingTimers(), 0u);
    spaces_.setCurrentSpace("B");
    loop_.advance(seconds(1));
    EXPECT_EQ(loop_.pendingTimers(), 0u);
}

}  // namespace
}  // namespace orvellos
