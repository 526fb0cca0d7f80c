// The screens of the running application, on a server whose monitors and panels change.

#include "platform/x11/screens/X11Screens.h"

#include "tests/desktop/X11LayerTest.h"

namespace desktop_test {
namespace {

using namespace std::chrono_literals;
using platform::Rect;
using platform::x11::X11Screens;

class X11ScreensTest : public X11LayerTest {
  protected:
    explicit X11ScreensTest(std::vector<std::string> serverArguments = {})
        : X11LayerTest({.windowManager = {.kind = WindowManager::None},
                        .serverArguments = std::move(serverArguments)}) {}

    void startScreens() {
        screens.emplace(*connection, atoms, events, runLoop, 1);
        changed = screens->onParametersChanged([this] { ++changes; });
    }
    void xrandr(std::vector<std::string> words) {
        words.insert(words.begin(), "xrandr");
        const auto result = desktop.run(words);
        ASSERT_EQ(result.status, 0) << result.standardError;
        deliver(20ms);
    }
    // A window that keeps an edge for itself, in the list of windows.
    void addPanel(const std::vector<std::uint32_t>& strut) {
        const auto panel = makeWindow();
        x.setCardinals(panel, "_NET_WM_STRUT_PARTIAL", strut);
        xcb_change_property(x.connection(), XCB_PROP_MODE_APPEND, x.root(), x.atom("_NET_CLIENT_LIST"),
                            XCB_ATOM_WINDOW, 32, 1, &panel);
    }
    std::vector<Rect> visibleFrames() const {
        std::vector<Rect> frames;
        for (const auto& screen : screens->screens()) frames.push_back(screen.visibleFrame);
        return frames;
    }

    std::optional<X11Screens> screens;
    int changes = 0;
    platform::Subscription changed;
};

TEST_F(X11ScreensTest, LeaveOutPanelsAndWhatTheWindowManagerKeeps) {
    startScreens();
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{0, 0, 1280, 800}}));
    setRoot("_NET_CURRENT_DESKTOP", {0});
    setRoot("_NET_WORKAREA", {40, 30, 1240, 770, 0, 0, 1280, 800});
    deliver(20ms);
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{40, 0, 1240, 770}}));
    setRoot("_NET_CURRENT_DESKTOP", {1});
    deliver(20ms);
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{0, 0, 1280, 800}})) << "each desktop has its own";
    EXPECT_EQ(changes, 2);

    xrandr({"--setmonitor", "left", "640/100x800/100+0+0", "screen"});
    xrandr({"--setmonitor", "right", "640/100x800/100+640+0", "none"});
    addPanel({0, 0, 50, 0, 0, 0, 0, 0, 0, 639, 0, 0});  // at the top of the left monitor
    setRoot("_NET_WORKAREA", {0, 50, 1280, 700, 0, 50, 1280, 700});
    deliver(20ms);
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{0, 0, 640, 750}, {640, 50, 640, 700}}))
        << "the panel tells more than the work area";
    setRoot("_NET_WORKAREA", {0, 0, 640, 800, 0, 0, 640, 800});
    deliver(20ms);
    EXPECT_EQ(visibleFrames()[1], (Rect{640, 0, 640, 800})) << "a work area on another monitor";
}

TEST_F(X11ScreensTest, TellOfAMonitorThatMovedAlone) {
    startScreens();
    xrandr({"--setmonitor", "first", "640/100x800/100+0+0", "screen"});
    const auto before = screens->screens();
    const auto told = changes;
    xrandr({"--setmonitor", "second", "640/100x800/100+100+0", "screen"});  // takes the output over
    EXPECT_EQ(screens->screens(), before);
    EXPECT_EQ(changes, told + 1);
}

TEST_F(X11ScreensTest, StayWhatTheyWereWhileTheServerDoesNotAnswer) {
    startScreens();
    freeze();
    setRoot("_NET_WORKAREA", {40, 30, 1240, 770});
    x.synchronize();
    ASSERT_TRUE(waitUntil([&] {
        watcher.read();
        return runLoop.pendingTimers() > 0;
    }));
    runLoop.advance(10s);
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{0, 0, 1280, 800}}));
    EXPECT_EQ(changes, 0);
    thaw();
    deliver(2s);
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{40, 0, 1240, 770}}));
    EXPECT_EQ(runLoop.pendingTimers(), 0U);
}

TEST_F(X11ScreensTest, HaveThePointerOnThemInEveryCorner) {
    startScreens();
    const auto frame = screens->screens().at(0).frame;
    for (const auto& [pixelX, pixelY] : {std::pair{0, 0}, {1279, 0}, {0, 799}, {1279, 799}}) {
        desktop.devices().movePointer(pixelX, pixelY);
        EXPECT_TRUE(frame.contains(screens->pointerLocation())) << pixelX << " " << pixelY;
    }
    const auto main = screens->mainDisplayId();
    EXPECT_TRUE(screens->displayUuid(main));
    EXPECT_FALSE(screens->displayUuid({main.value + 1}));
}

class X11ScreensWithoutRandr : public X11ScreensTest {
  protected:
    X11ScreensWithoutRandr() : X11ScreensTest({"-extension", "RANDR"}) {}
};

TEST_F(X11ScreensWithoutRandr, AreTheRootWindow) {
    startScreens();
    EXPECT_EQ(visibleFrames(), (std::vector<Rect>{{0, 0, 1280, 800}}));
    EXPECT_FALSE(screens->displayUuid(screens->mainDisplayId()));
    EXPECT_FALSE(connection->isBroken());
}

TEST_F(X11LayerTest, WaitsOnceATurnForAServerThatHangs) {
    freeze();
    connection->setPatience(1s);
    connection->beginTurn();
    const auto start = platform::x11::monotonicNow();
    for (int question = 0; question < 60; ++question) connection->synchronize();
    EXPECT_TRUE(connection->isLate());
    EXPECT_LT(platform::x11::monotonicNow() - start, 30s);
    thaw();
    connection->beginTurn();
    connection->synchronize();
    EXPECT_FALSE(connection->isLate());
}

}  // namespace
}  // namespace desktop_test
