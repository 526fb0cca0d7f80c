#include "orvellos/overview/MissionControlKeyObserver.h"

#include "orvellos/overview/MissionControlObserver.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using namespace platform::modifier;
namespace key = platform::key;

class MissionControlKeyObserverTests : public ApplicationTest {};

struct Keys final : AnnouncingKeyListener {
    void onMissionControl() override { heard.emplace_back("open"); }
    void onSpaceSwitch() override { heard.emplace_back("switch"); }
    Texts heard;
};

TEST_F(MissionControlKeyObserverTests, KnowsTheKeysThatAnnounceSomething) {
    using enum AnnouncingKey;
    struct Row {
        platform::KeyEvent event;
        AnnouncingKey kind = None;
    };
    const Row rows[] = {{{160, 0}, MissionControl},
                        {{160, kCommand | kShift}, MissionControl},
                        {{126, kControl}, MissionControl},
                        {{126, kControl | kShift | kOption | kCommand}, MissionControl},
                        {{126, 0}, None},
                        {{99, 0}, MissionControl},
                        {{99, 0x100}, MissionControl},
                        {{99, 0x800000}, None},
                        {{99, kCapsLock}, None},
                        {{123, kControl}, SpaceSwitch},
                        {{124, kControl | kOption | kShift}, SpaceSwitch},
                        {{123, kControl | kCommand}, None},
                        {{123, 0}, None},
                        {{125, kControl}, None},
                        {{18, kControl}, None}};
    for (const auto& row : rows)
        EXPECT_EQ(classifyKey(row.event), row.kind) << row.event.keyCode << " " << row.event.modifierFlags;
}

TEST_F(MissionControlKeyObserverTests, ReportsAfterTheKeyEvent) {
    MissionControlKeyObserver observer(desktop_.keyboard, desktop_.runLoop);
    Keys first;
    Keys second;
    observer.start(first);
    observer.start(second);
    desktop_.keyboard.press(key::kUpArrow, kControl);
    EXPECT_TRUE(second.heard.empty());
    for (int repeat = 0; repeat < 2; ++repeat) desktop_.keyboard.press(key::kRightArrow, kControl);
    desktop_.runLoop.advance({});
    EXPECT_EQ(second.heard, (Texts{"open", "switch", "switch"}));
    EXPECT_TRUE(first.heard.empty());
    EXPECT_EQ(logged(), Texts{"KEY: MC keystroke detected (code=126)"});
    desktop_.keyboard.press(key::kMissionControl);
    observer.stop();
    desktop_.keyboard.press(key::kMissionControl);
    desktop_.runLoop.advance({});
    EXPECT_EQ(second.heard.size(), 3U);
}

TEST_F(MissionControlKeyObserverTests, TheGateRemembersTheLastCloseForTwoSeconds) {
    MCActivityGate gate;
    const auto at = [&](double time) { return desktop_.runLoop.now() + platform::seconds(time); };
    EXPECT_FALSE(gate.wasActiveRecently(at(0)));
    gate.update(true, at(0));
    EXPECT_TRUE(gate.wasActiveRecently(at(100)));
    gate.update(false, at(10));
    gate.update(false, at(11.5));
    for (const auto& [time, recently] : {std::pair(9.9, false), {10.0, true}, {12.0, true}, {12.1, false}})
        EXPECT_EQ(gate.wasActiveRecently(at(time)), recently) << time;
}

}  // namespace
}  // namespace orvellos
