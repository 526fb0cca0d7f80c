#include "orvellos/spaces/SpaceSwitcher.h"

#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

class SpaceSwitcherTest : public ApplicationTest {
  protected:
    SpaceSwitcherTest() {
        spaces.addDisplay("Main", {"A", "B", "C"});
        connectLog(true);
    }
    bool switchTo(const std::string& uuid) { return switchToSpace(identifier_, uuid); }

    platform::simulated::SimulatedSpaces& spaces = desktop_.spaces;
};

TEST_F(SpaceSwitcherTest, showsSwitchesAndHides) {
    EXPECT_TRUE(switchTo("C"));
    EXPECT_EQ(spaces.calls(), (Texts{"show 3", "setCurrent Main 3", "hide 1"}));
    EXPECT_EQ(logged(), (Texts{"switchToSpace: display=Main target=3 prev=1", "  called Show(3)",
                               "  called SetCurrent(3)", "  called Hide(1)"}));
    spaces.forgetCalls();
    connectLog(false);
    EXPECT_TRUE(switchTo("C"));
    EXPECT_EQ(spaces.calls(), (Texts{"show 3", "setCurrent Main 3"})) << "the target itself is not hidden";
    EXPECT_EQ(logged(), Texts()) << "silent unless debugging";
}

TEST_F(SpaceSwitcherTest, goesWithoutShowAndHide) {
    spaces.entryPoints() = {"_CGSManagedDisplaySetCurrentSpace"};
    spaces.displays().front().currentSpace.reset();
    EXPECT_TRUE(switchTo("B"));
    EXPECT_EQ(logged(), (Texts{"switchToSpace: display=Main target=2 prev=nil", "  Show symbol MISSING",
                               "  called SetCurrent(2)", "  Hide symbol MISSING"}));
}

TEST_F(SpaceSwitcherTest, failsWithoutATargetOrAnEntryPoint) {
    EXPECT_FALSE(switchTo("gone"));
    spaces.displays().front().identifier.reset();
    EXPECT_FALSE(switchTo("B")) << "its display has no identifier";
    spaces.displays().front().identifier = "Main";
    spaces.displays().front().spaces->at(1).managedSpaceId.reset();
    EXPECT_FALSE(switchTo("B")) << "no managed id";
    EXPECT_EQ(logged(), Texts());
    spaces.entryPoints().clear();
    EXPECT_FALSE(switchTo("C"));
    EXPECT_EQ(logged(), Texts{"switchToSpace: SetCurrentSpace symbol not found"});
    spaces.setAnswering(false);
    EXPECT_FALSE(switchTo("C"));
    EXPECT_TRUE(spaces.calls().empty());
}

}  // namespace
}  // namespace orvellos
