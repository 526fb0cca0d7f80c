#include "orvellos/spaces/SpaceIdentifier.h"

#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using platform::DisplayId;
using platform::ManagedSpaceId;

class SpaceIdentifierTest : public ApplicationTest {
  protected:
    platform::simulated::SimulatedSpaces& spaces = desktop_.spaces;
    platform::simulated::SimulatedScreens& screens = desktop_.screens;
    SpaceIdentifier& identifier = identifier_;

    // Screen 1 at the left with Spaces A B C; screen 2 right of it with Spaces D E.
    void useTwoDisplays() {
        screens.addScreen({0, 0, 100, 100}, "UUID-1");
        screens.addScreen({100, 0, 100, 100}, "UUID-2");
        spaces.addDisplay("Main", {"A", "B", "C"});
        spaces.addDisplay("UUID-2", {"D", "E"});
    }
};

TEST_F(SpaceIdentifierTest, readsTwoDisplaysInOrder) {
    useTwoDisplays();
    spaces.setCurrentSpace("E");
    EXPECT_EQ(identifier.orderedSpaceUUIDs(), (Texts{"A", "B", "C", "D", "E"}));
    EXPECT_EQ(identifier.currentSpaceUUID(), "A");
    EXPECT_EQ(identifier.currentSpaceUUIDs(), (std::set<std::string>{"A", "E"}));
    EXPECT_EQ(identifier.allSpaceUUIDs().size(), 5U);
    EXPECT_EQ(identifier.managedSpaceID("D"), ManagedSpaceId{4});
    EXPECT_EQ(identifier.spaceUUID({4}), "D");
    EXPECT_EQ(identifier.displayID("B"), DisplayId{1});
    EXPECT_EQ(identifier.displayID("E"), DisplayId{2});
    EXPECT_EQ(identifier.displayID("Z"), std::nullopt);
    EXPECT_FALSE(identifier.isSharedSpacesMode());
    const auto e = identifier.snapshot().displays.at(1).spaces.at(1);
    EXPECT_EQ(e, (SpaceInfo{"E", ManagedSpaceId{5}, "UUID-2", 1, true}));
}

TEST_F(SpaceIdentifierTest, answersForTheDisplayUnderThePointer) {
    useTwoDisplays();
    spaces.setCurrentSpace("E");
    struct Case {
        const char* name;
        platform::Point pointer;
        Texts ordered;
        std::string current;
        std::size_t index;
    };
    for (const auto& [name, pointer, ordered, current, index] : std::vector<Case>{
             {"first screen", {50, 50}, {"A", "B", "C"}, "A", 0},
             {"second screen's first column", {100, 0}, {"D", "E"}, "E", 1},
             {"outside every screen", {500, 500}, {"A", "B", "C"}, "A", 0},
         }) {
        SCOPED_TRACE(name);
        screens.movePointer(pointer);
        EXPECT_EQ(identifier.orderedSpaceUUIDsOnPointerDisplay(), ordered);
        EXPECT_EQ(identifier.currentSpaceUUIDOnPointerDisplay(), current);
        EXPECT_EQ(identifier.currentSpaceIndexOnPointerDisplay(), index);
    }
}

TEST_F(SpaceIdentifierTest, fallsBackToTheFirstDisplayWithoutScreens) {
    spaces.addDisplay("UUID-9", {"A", "B"});
    spaces.addDisplay("UUID-8", {"C"});
    spaces.displays()[0].currentSpace.reset();
    EXPECT_EQ(identifier.orderedSpaceUUIDsOnPointerDisplay(), Texts{"C"});
    EXPECT_EQ(identifier.currentSpaceUUIDOnPointerDisplay(), "C");
    screens.setScreens({{std::nullopt, {0, 0, 10, 10}, {}, 1}});
    EXPECT_EQ(identifier.orderedSpaceUUIDsOnPointerDisplay(), Texts{"C"}) << "a screen without a display id";
    screens.setScreens({{DisplayId{7}, {0, 0, 10, 10}, {}, 1}});
    EXPECT_EQ(identifier.orderedSpaceUUIDsOnPointerDisplay(), Texts{}) << "a display of no entry";
    EXPECT_EQ(identifier.currentSpaceUUIDOnPointerDisplay(), std::nullopt);
}

TEST_F(SpaceIdentifierTest, toleratesPartialAnswers) {
    screens.addScreen({0, 0, 100, 100}, "UUID-1");
    screens.addScreen({100, 0, 100, 100}, "UUID-2");
    spaces.addDisplay("Main", {"A", "B", "C"});
    auto& display = spaces.displays().front();
    display.spaces->at(0).uuid.reset();
    display.spaces->at(1).managedSpaceId.reset();
    spaces.displays().push_back({std::nullopt, platform::SpaceEntry{"X", std::nullopt}, std::nullopt});
    EXPECT_EQ(identifier.orderedSpaceUUIDs(), (Texts{"B", "C"}));
    EXPECT_EQ(identifier.snapshot().displays[0].spaces[1].indexInDisplay, 1U);
    EXPECT_EQ(identifier.managedSpaceID("B"), std::nullopt);
    EXPECT_EQ(identifier.spaceUUID({1}), std::nullopt);
    EXPECT_FALSE(identifier.isSharedSpacesMode());
    spaces.displays().pop_back();
    EXPECT_TRUE(identifier.isSharedSpacesMode());
    EXPECT_EQ(identifier.displayID("C"), DisplayId{1});
}

TEST_F(SpaceIdentifierTest, givesSharedSpacesToThePointerOnAnyScreen) {
    screens.addScreen({0, 0, 100, 100}, "UUID-1");
    screens.addScreen({100, 0, 100, 100}, "UUID-2");
    spaces.addDisplay("Main", {"A", "B"});
    spaces.setCurrentSpace("B");
    for (const platform::Point pointer : {platform::Point{50, 50}, {150, 50}, {500, 500}}) {
        screens.movePointer(pointer);
        EXPECT_EQ(identifier.orderedSpaceUUIDsOnPointerDisplay(), (Texts{"A", "B"})) << pointer.x;
        EXPECT_EQ(identifier.currentSpaceUUIDOnPointerDisplay(), "B") << pointer.x;
        EXPECT_EQ(identifier.currentSpaceIndexOnPointerDisplay(), 1U) << pointer.x;
    }
}

TEST_F(SpaceIdentifierTest, searchesOnWhenADisplaysScreenIsGone) {
    screens.addScreen({0, 0, 100, 100}, "UUID-1");
    spaces.addDisplay("UUID-gone", {"A"});
    spaces.addDisplay("UUID-1", {"A"});
    EXPECT_EQ(identifier.displayID("A"), DisplayId{1});
}

TEST_F(SpaceIdentifierTest, hasEmptyResultsWithoutAnAnswer) {
    useTwoDisplays();
    spaces.setAnswering(false);
    EXPECT_TRUE(identifier.orderedSpaceUUIDs().empty());
    EXPECT_TRUE(identifier.currentSpaceUUIDs().empty());
    EXPECT_EQ(identifier.currentSpaceUUIDOnPointerDisplay(), std::nullopt);
    EXPECT_EQ(identifier.currentSpaceIndexOnPointerDisplay(), std::nullopt);
    EXPECT_FALSE(identifier.isSharedSpacesMode());
    EXPECT_FALSE(identifier.moveWindow({7}, "A"));
    EXPECT_TRUE(spaces.calls().empty());
}

TEST_F(SpaceIdentifierTest, movesAndRemovesWindows) {
    useTwoDisplays();
    struct Case {
        const char* target;
        bool moved;
        Texts calls;
    };
    for (const auto& [target, moved, calls] : std::vector<Case>{
             {"B", true, {"add 7 to 2", "remove 7 from 1"}},
             {"A", true, {"add 7 to 1"}},
             {"gone", false, {}},
         }) {
        SCOPED_TRACE(target);
        spaces.forgetCalls();
        EXPECT_EQ(identifier.moveWindow({7}, target), moved);
        EXPECT_EQ(spaces.calls(), calls);
    }
    EXPECT_EQ(identifier.spaceIDsForWindow({7}).size(), 2U);
    EXPECT_TRUE(identifier.removeWindow({7}, "B"));
    EXPECT_EQ(identifier.spaceIDsForWindow({7}), std::vector<ManagedSpaceId>{{1}});
    EXPECT_FALSE(identifier.removeWindow({7}, "gone"));
}

TEST_F(SpaceIdentifierTest, resolvesEntryPointsOnceAndInOrder) {
    spaces.entryPoints() = {"CGSManagedDisplaySetCurrentSpace", "_CGSManagedDisplaySetCurrentSpace",
                            "CGSHideSpaces"};
    EXPECT_EQ(identifier.symbolStatusLine(),
              "setCurrent=CGSManagedDisplaySetCurrentSpace  show=<none>  hide=CGSHideSpaces");
    const int lookups = spaces.entryPointLookups();
    EXPECT_TRUE(identifier.setCurrentSpaceEntry());
    EXPECT_FALSE(identifier.showSpacesEntry());
    EXPECT_TRUE(identifier.hideSpacesEntry());
    EXPECT_EQ(spaces.entryPointLookups(), lookups);
}

}  // namespace
}  // namespace orvellos
