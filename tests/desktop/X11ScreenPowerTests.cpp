// The screens' sleep, as the X11 layer tells of it on a real server.

#include "platform/x11/connection/Extensions.h"
#include "platform/x11/screens/X11ScreenPower.h"

#include <gtest/gtest.h>

#include "tests/support/MainLoop.h"
#include "tests/support/PrivateDesktop.h"

namespace platform::x11 {
namespace {

using namespace desktop_test;

constexpr auto kSleep = SessionEvent::ScreensDidSleep;
constexpr auto kWake = SessionEvent::ScreensDidWake;

class X11ScreenPowerTest : public testing::Test {
  protected:
    void force(std::uint8_t mode) {
        xcb_force_screen_saver(desktop_.x().connection(), mode);
        desktop_.x().synchronize();
    }
    // The events since the last call: waiting for the server reads them, and a turn of the main loop delivers
    // them.
    std::vector<SessionEvent> take() {
        connection_->synchronize();
        bool turned = false;
        const auto turn = mainLoop_.runLoop.after(Duration::zero(), [&] { turned = true; });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return turned; }));
        return std::exchange(told_, {});
    }

    PrivateDesktop desktop_{{.windowManager = {.kind = WindowManager::None}}};
    MainLoop mainLoop_;
    std::unique_ptr<XConnection> connection_ =
        openWithExtensions(desktop_.display().c_str(), kGenerousDeadline);
    XEvents events_{*connection_, mainLoop_.runLoop, mainLoop_.runLoop};
    std::vector<SessionEvent> told_;
};

TEST_F(X11ScreenPowerTest, TellsOfEachSleepAndWakeOnce) {
    X11ScreenPower power(*connection_, events_);
    const auto subscription = power.onEvent([this](auto event) { told_.push_back(event); });
    const std::pair<std::uint8_t, std::vector<SessionEvent>> rows[] = {
        {XCB_SCREEN_SAVER_RESET, {}},      {XCB_SCREEN_SAVER_ACTIVE, {kSleep}}, {XCB_SCREEN_SAVER_ACTIVE, {}},
        {XCB_SCREEN_SAVER_RESET, {kWake}}, {XCB_SCREEN_SAVER_RESET, {}},
    };
    for (const auto& [mode, expected] : rows) {
        force(mode);
        EXPECT_EQ(take(), expected);
    }
    force(XCB_SCREEN_SAVER_ACTIVE);
    desktop_.devices().movePointer(10, 10);
    EXPECT_TRUE(mainLoop_.runUntil([&] {
        return told_ == std::vector{kSleep, kWake};
    })) << "the user is back";
}

TEST_F(X11ScreenPowerTest, TellsOfTheWakeOfScreensThatSleptBefore) {
    force(XCB_SCREEN_SAVER_ACTIVE);
    X11ScreenPower power(*connection_, events_);
    const auto subscription = power.onEvent([this](auto event) { told_.push_back(event); });
    EXPECT_EQ(take(), std::vector<SessionEvent>{});
    force(XCB_SCREEN_SAVER_RESET);
    EXPECT_EQ(take(), std::vector{kWake});
}

}  // namespace
}  // namespace platform::x11
