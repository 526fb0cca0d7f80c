#include "orvellos/windows/SpaceBindingController.h"

#include "tests/support/ManagerTest.h"

namespace orvellos {
namespace {

using platform::ManagedSpaceId;
using platform::Rect;

class SpaceBindingControllerTests : public ManagerTest {
  protected:
    // As the desktop, or the user in Mission Control, moves windows.
    void moveTo(std::size_t index, std::uint64_t space) {
        desktop_.spaces.putWindow(window(index).windowNumber(), {{space}});
    }
    bool isOn(const TagWindow& window, const std::string& uuid) {
        const auto spaces = spacesOf(window);
        return std::ranges::count(spaces, identifier_.managedSpaceID(uuid)) == 1;
    }
    // The tags' Spaces are looked at a moment later.
    void changeSpace() {
        desktop_.spaces.notifyActiveSpaceChanged();
        wait(0.081);
    }
    void openAndCloseMissionControl() {
        desktop_.overview.setOpen(true);
        wait(0.2);
        desktop_.overview.setOpen(false);
    }
};

TEST_F(SpaceBindingControllerTests, FollowsTheUserAndNobodyElse) {
    struct Row {
        const char* name;
        std::optional<double> sinceMissionControl;  // seconds since its close
        std::vector<std::uint64_t> mailAndCodeOn;
        std::vector<std::string> boundTo;
        std::string rejection;
    };
    const auto rejecting = [](const std::string& counts) {
        return "relocate: rejecting " + counts +
               " window drift(s) — macOS-driven relocation signature; preserving stored bindings";
    };
    const Row rows[] = {{"at any other time", {}, {2, 3}, {"A", "C"}, rejecting("1 of 1")},
                        {"just after Mission Control", 1.9, {2, 3}, {"B", "C"}, ""},
                        {"too late", 2.1, {2, 3}, {"A", "C"}, rejecting("1 of 1")},
                        {"two into one Space", 1, {2, 2}, {"A", "C"}, rejecting("2 of 2")},
                        {"two that change places", 1, {3, 1}, {"C", "A"}, ""},
                        {"one that stayed", 1, {1, 1}, {"A", "A"}, ""}};
    start();
    const auto original = store_.tags();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        setTags(original);
        moveTo(0, 1);
        moveTo(1, 3);
        wait(10);
        connectLog(false);
        if (row.sinceMissionControl) {
            openAndCloseMissionControl();
            while (!hasLogged("SINK: observer.isActive → false")) wait(0.001);
            wait(*row.sinceMissionControl - 0.081);
        }
        connectLog(false);
        for (std::size_t i = 0; i < 2; ++i) moveTo(i, row.mailAndCodeOn[i]);
        changeSpace();
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(tag(i).spaceUUID, row.boundTo[i]);
            EXPECT_TRUE(isOn(window(i), row.boundTo[i]));
            EXPECT_TRUE(isOn(backup(i), row.boundTo[i]));
        }
        EXPECT_TRUE(row.rejection.empty() || hasLogged(row.rejection));
        const TagStore stored(desktop_.files, desktop_.runLoop, "/data");
        EXPECT_EQ(stored.tags().at(0).spaceUUID, row.boundTo[0]);
    }
}

// Where Spaces are numbered by their places, a change of the row leaves windows with numbers of before.
TEST_F(SpaceBindingControllerTests, KeepsBindingsWhenSpacesAreRenumbered) {
    enum class MissionControl { Closed, Open, OpenedAfterwards };
    using Spaces = platform::simulated::SimulatedSpaces;
    struct Row {
        const char* name;
        void (*change)(Spaces&);
    };
    const Row rows[] = {{"one removed", [](Spaces& spaces) { spaces.removeSpace("B"); }},
                        {"one inserted in front", [](Spaces& spaces) { spaces.insertSpace(0, "B"); }},
                        {"two that change places", [](Spaces& spaces) { spaces.swapSpaces(2, 3); }},
                        {"three that change places", [](Spaces& spaces) {
                             spaces.swapSpaces(0, 2);
                             spaces.swapSpaces(0, 3);
                         }}};
    desktop_.spaces.addSpace("D");
    desktop_.spaces.addSpace("E");
    desktop_.spaces.numberByPlace();
    store_.add({TagID::random(), "Music", "#EF4444", {}, "D"});
    start();
    const auto files = desktop_.files.files;
    for (const auto& row : rows) {
        for (const auto when :
             {MissionControl::Closed, MissionControl::Open, MissionControl::OpenedAfterwards}) {
            SCOPED_TRACE(testing::Message() << row.name << ", " << static_cast<int>(when));
            wait(10);
            desktop_.overview.setOpen(when == MissionControl::Open);
            wait(2);
            row.change(desktop_.spaces);
            wait(when == MissionControl::OpenedAfterwards ? 2 : 0.001);
            if (when == MissionControl::OpenedAfterwards) openAndCloseMissionControl();
            desktop_.overview.setOpen(false);
            wait(3);
            EXPECT_EQ(desktop_.files.files, files);
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_EQ(desktop_.spaces.trueSpaceOf(window(i).windowNumber()), tag(i).spaceUUID);
                EXPECT_TRUE(isOn(window(i), *tag(i).spaceUUID)) << "and it is known";
            }
            if (identifier_.orderedSpaceUUIDs().size() == 4) desktop_.spaces.insertSpace(1, "B");
            if (identifier_.orderedSpaceUUIDs().size() == 6) desktop_.spaces.removeSpace("B");
        }
    }
}

TEST_F(SpaceBindingControllerTests, AWindowOnItsSpaceAndAnotherHasDrifted) {
    const DriftDetector::Input input{TagID::random(), "Mail", "A", {1}, {{0}, {1}, {2}, {3}}};
    const auto lookUp = [](ManagedSpaceId space) -> std::optional<std::string> {
        return space.value == 2 ? std::optional<std::string>("B") : std::nullopt;
    };
    EXPECT_EQ(DriftDetector::detect(std::vector{input}, lookUp),
              (std::vector{WindowDrift{input.tagID, "A", "B"}}));
    auto unknown = input;
    unknown.currentPins = {{3}};
    EXPECT_TRUE(DriftDetector::detect(std::vector{unknown}, lookUp).empty()) << "a Space without a uuid";
}

TEST_F(SpaceBindingControllerTests, OnlyPinsWhileScreensShareTheirSpaces) {
    desktop_.screens.addScreen({1440, 0, 1440, 900});
    start();
    openAndCloseMissionControl();
    wait(0.5);
    moveTo(0, 2);
    changeSpace();
    EXPECT_EQ(tag(0).spaceUUID, "A");
    EXPECT_TRUE(isOn(window(0), "A"));
}

TEST_F(SpaceBindingControllerTests, KnowsTheOrphansAndKeepsThemWhileNothingIsKnown) {
    start();
    const auto& orphans = manager_.orphanedTagIDs();
    desktop_.spaces.removeSpace("C");
    for (int burst = 0; burst < 3; ++burst) desktop_.screens.setScreens(desktop_.screens.screens());
    wait(0.059);
    EXPECT_TRUE(orphans.empty());
    wait(0.002);
    EXPECT_EQ(orphans, std::set{tag(1).id});
    wait(0.3);
    EXPECT_EQ(seen(1).alpha, 0) << "hidden without another event";
    desktop_.spaces.setAnswering(false);
    changeSpace();
    EXPECT_EQ(orphans, std::set{tag(1).id});
    EXPECT_TRUE(
        hasLogged("recomputeSpaceOrphans: CGS returned no Spaces — enumeration unavailable, keeping "
                  "existing orphan set"));
    EXPECT_EQ(tag(1).spaceUUID, "C");
}

TEST_F(SpaceBindingControllerTests, TakesPlacesBackThatAreOnNoScreen) {
    struct Row {
        const char* name = "";
        Rect frame;
        bool kept = false;
    };
    const Row rows[] = {{"on the screen", {100, 100, 50, 50}, true},
                        {"half over its edge", {-24, 100, 50, 50}, true},
                        {"centred past its edge", {-26, 100, 50, 50}, false},
                        {"on a screen that was unplugged", {2000, 100, 50, 50}, false}};
    start();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        store_.updateFrame(tag(0).id, row.frame);
        desktop_.screens.setScreens(desktop_.screens.screens());
        settle();
        EXPECT_EQ(tag(0).frame.has_value(), row.kept);
    }
    store_.updateFrame(tag(0).id, {100, 100, 50, 50});
    desktop_.screens.setScreens({});
    settle();
    EXPECT_TRUE(tag(0).frame) << "no screen at all says nothing about places";
}

}  // namespace
}  // namespace orvellos
