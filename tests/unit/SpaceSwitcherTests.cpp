#include "orvellos/SpaceSwitcher.h"

#include <gtest/gtest.h>

#include "orvellos/DebugLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSpaces.h"

namespace orvellos {
namespace {

class GeneralLog final : public platform::SystemLog {
  public:
    void write(std::string_view category, std::string_view message) override {
        if (category == "general") text += std::string(message) + "\n";
    }
    void writeGeneral(std::string_view) override {}
    std::string text;
};

class SpaceSwitcherTest : public testing::Test {
  protected:
    platform::simulated::SimulatedRunLoop runLoop;
    platform::simulated::SimulatedSpaces spaces{runLoop};
    platform::simulated::SimulatedScreens screens{runLoop};
    GeneralLog systemLog;

    void SetUp() override {
        spaces.addDisplay("Main", {"A", "B", "C"});
        connectWithEcho(true);
    }
    void TearDown() override { connectDebugLog({}); }
    void connectWithEcho(bool echo) {
        connectDebugLog(
            {.systemLog = &systemLog, .standardError = {}, .clock = &runLoop, .echoEnabled = echo});
    }
    bool switchTo(const std::string& uuid) const {
        const SpaceIdentifier identifier(spaces, const_cast<platform::simulated::SimulatedSpaces&>(spaces),
                                         spaces, screens, screens);
        return switchToSpace(identifier, uuid);
    }
};

TEST_F(SpaceSwitcherTest, showsSwitchesAndHides) {
    EXPECT_TRUE(switchTo("C"));
    EXPECT_EQ(spaces.calls(), (std::vector<std::string>{"show 3", "setCurrent Main 3", "hide 1"}));
    EXPECT_EQ(systemLog.text,
              "switchToSpace: display=Main target=3 prev=1\n  called Show(3)\n  called SetCurrent(3)\n"
              "  called Hide(1)\n");
}

TEST_F(SpaceSwitcherTest, doesNotHideTheTargetItself) {
    EXPECT_TRUE(switchTo("A"));
    EXPECT_EQ(spaces.calls(), (std::vector<std::string>{"show 1", "setCurrent Main 1"}));
}

TEST_F(SpaceSwitcherTest, goesWithoutShowAndHide) {
    spaces.entryPoints() = {"_CGSManagedDisplaySetCurrentSpace"};
    spaces.displays().front().currentSpace.reset();
    EXPECT_TRUE(switchTo("B"));
    EXPECT_EQ(systemLog.text,
              "switchToSpace: display=Main target=2 prev=nil\n  Show symbol MISSING\n  called SetCurrent(2)\n"
              "  Hide symbol MISSING\n");
}

TEST_F(SpaceSwitcherTest, failsWithoutATargetOrAnEntryPoint) {
    EXPECT_FALSE(switchTo("gone"));
    spaces.displays().front().identifier.reset();
    EXPECT_FALSE(switchTo("B")) << "its display has no identifier";
    spaces.displays().front().identifier = "Main";
    spaces.displays().front().spaces->at(1).managedSpaceId.reset();
    EXPECT_FALSE(switchTo("B")) << "no managed id";
    EXPECT_EQ(systemLog.text, "");
    spaces.entryPoints().clear();
    EXPECT_FALSE(switchTo("C"));
    EXPECT_EQ(systemLog.text, "switchToSpace: SetCurrentSpace symbol not found\n");
    spaces.setAnswering(false);
    EXPECT_FALSE(switchTo("C"));
    EXPECT_TRUE(spaces.calls().empty());
}

TEST_F(SpaceSwitcherTest, isSilentUnlessDebugging) {
    connectWithEcho(false);
    EXPECT_TRUE(switchTo("C"));
    EXPECT_EQ(systemLog.text, "");
}

}  // namespace
}  // namespace orvellos
