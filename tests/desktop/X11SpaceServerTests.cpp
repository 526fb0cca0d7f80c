// The Space layout of the running application: what it makes of a window manager that comes, changes and
// dies.

#include "platform/x11/spaces/X11SpaceServer.h"

#include <csignal>

#include "tests/desktop/X11LayerTest.h"

namespace desktop_test {
namespace {

using namespace std::chrono_literals;
using platform::x11::X11SpaceServer;
using Ids = std::vector<std::string>;

class X11SpaceServerTest : public X11LayerTest {
  protected:
    using X11LayerTest::X11LayerTest;

    void startServer() {
        server.emplace(*connection, atoms, events, runLoop, [this](auto answer) {
            ++questions;
            answerKwin = std::move(answer);
        });
        changed = server->onActiveSpaceChanged([this] { ++changes; });
        windowManagerChanged = server->onWindowManagerChanged([this] { ++windowManagers; });
    }
    void becomeWindowManager(const std::string& name, std::uint32_t desktops) {
        check = makeWindow();
        setCheckWindow(check, check);
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, check, x.atom("_NET_WM_NAME"),
                            x.atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(name.size()), name.data());
        setAtoms("_NET_SUPPORTED", {"_NET_NUMBER_OF_DESKTOPS", "_NET_CURRENT_DESKTOP"});
        setRoot("_NET_NUMBER_OF_DESKTOPS", {desktops});
        setRoot("_NET_CURRENT_DESKTOP", {0});
        setCheckWindow(x.root(), check);
        x.synchronize();
    }
    // The uuids of the Spaces, the current one in brackets; empty without an answer.
    Ids spaces() const {
        const auto answer = server->copyManagedDisplaySpaces();
        if (!answer) return {};
        Ids ids;
        for (const auto& space : answer->front().spaces.value())
            ids.push_back(space == answer->front().currentSpace ? "[" + space.uuid.value() + "]"
                                                                : space.uuid.value());
        return ids;
    }

    xcb_window_t check = 0;
    int questions = 0;
    std::function<void(X11SpaceServer::KwinRow)> answerKwin;
    std::optional<X11SpaceServer> server;
    int changes = 0;
    int windowManagers = 0;
    platform::Subscription changed;
    platform::Subscription windowManagerChanged;
};

TEST_F(X11SpaceServerTest, KeepsWhatItKnowsUntilASlowServerAnswers) {
    becomeWindowManager("test", 3);
    startServer();
    const auto before = server->copyManagedDisplaySpaces();
    ASSERT_EQ(spaces().size(), 3U);
    freeze();
    setRoot("_NET_CURRENT_DESKTOP", {2});
    x.synchronize();
    ASSERT_TRUE(waitUntil([&] {
        watcher.read();
        runLoop.advance(0ms);
        return runLoop.pendingTimers() > 0;
    }));
    runLoop.advance(10s);
    EXPECT_EQ(server->copyManagedDisplaySpaces(), before);
    EXPECT_EQ(changes, 0);
    thaw();
    deliver(1s);
    EXPECT_EQ(server->facts().current, 2U);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(runLoop.pendingTimers(), 0U) << "nothing is left to try again";
}

TEST_F(X11SpaceServerTest, NoticesTheEndOfTheWindowManagerAndItsSuccessor) {
    becomeWindowManager("test", 3);
    startServer();
    EXPECT_TRUE(server->canSwitch());
    xcb_destroy_window(x.connection(), check);
    deliver(20ms);
    EXPECT_EQ(spaces(), Ids()) << "its root properties are still there";
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(server->canSwitch()) << "of the next one nothing is known yet";
    EXPECT_EQ(runLoop.pendingTimers(), 0U) << "its successor will tell of itself";

    becomeWindowManager("test", 2);
    setAtoms("_NET_SUPPORTED", {"_NET_NUMBER_OF_DESKTOPS"});
    deliver(299ms);
    EXPECT_EQ(windowManagers, 0);
    deliver(100ms);
    EXPECT_EQ(spaces().size(), 2U);
    EXPECT_EQ(windowManagers, 1);
    EXPECT_FALSE(server->canSwitch());
}

TEST_F(X11SpaceServerTest, ReadsACheckWindowThatIsNamedLate) {
    becomeWindowManager("test", 3);
    x.removeProperty(check, "_NET_SUPPORTING_WM_CHECK");
    x.synchronize();
    startServer();
    EXPECT_EQ(spaces(), Ids());
    setCheckWindow(check, check);
    deliver(400ms);
    EXPECT_EQ(spaces().size(), 3U);
}

TEST_F(X11SpaceServerTest, AsksKwinAgainWhenItsDesktopsChange) {
    becomeWindowManager("KWin", 2);
    startServer();
    ASSERT_EQ(questions, 1);
    EXPECT_EQ(spaces(), Ids()) << "by their own ids or not at all";
    answerKwin(platform::DesktopRow{Ids{"a", "b"}});
    EXPECT_EQ(spaces(), (Ids{"[a]", "b"}));

    setRoot("_NET_DESKTOP_NAMES", {1});  // as after a rename or a move
    deliver(20ms);
    EXPECT_EQ(questions, 2);
    EXPECT_EQ(spaces(), Ids()) << "while KWin is asked";
    setRoot("_NET_DESKTOP_NAMES", {2});
    deliver();
    answerKwin(platform::DesktopRow{Ids{"a", "b"}});  // from before the second change
    deliver(20ms);
    ASSERT_EQ(questions, 3);
    answerKwin(platform::DesktopRow{Ids{"b", "a"}});
    EXPECT_EQ(spaces(), (Ids{"[b]", "a"}));

    setRoot("_NET_NUMBER_OF_DESKTOPS", {3});
    deliver(20ms);
    EXPECT_EQ(spaces(), Ids()) << "until the ids of all three have come";
    answerKwin(platform::DesktopRow{Ids{"b", "a", "c"}});
    EXPECT_EQ(spaces(), (Ids{"[b]", "a", "c"}));
    EXPECT_EQ(changes, 3);

    setRoot("_NET_NUMBER_OF_DESKTOPS", {2});
    deliver(20ms);
    setRoot("_NET_NUMBER_OF_DESKTOPS", {3});
    deliver(20ms);
    EXPECT_EQ(spaces(), Ids()) << "as many as before, but not the same";
    answerKwin(platform::DesktopRow{Ids{"b", "a", "d"}});
    EXPECT_EQ(spaces(), (Ids{"[b]", "a", "d"}));

    setRoot("_NET_NUMBER_OF_DESKTOPS", {4});
    deliver(20ms);
    answerKwin(platform::DesktopRow{Ids{"new", "b", "a", "d"}, 1});
    EXPECT_EQ(spaces(), (Ids{"new", "[b]", "a", "d"})) << "by KWin's word: the number slid";
    setRoot("_NET_CURRENT_DESKTOP", {2});
    deliver(20ms);
    EXPECT_EQ(spaces(), (Ids{"new", "b", "[a]", "d"}));
}

TEST_F(X11SpaceServerTest, AsksASilentKwinMoreAndMoreSeldom) {
    becomeWindowManager("KWin", 2);
    startServer();
    for (int second = 0; second < 60; ++second) {
        if (const auto answer = std::exchange(answerKwin, nullptr)) answer(std::nullopt);
        runLoop.advance(1s);
    }
    runLoop.advance(10s);
    EXPECT_GT(questions, 5);
    EXPECT_LT(questions, 15);
    answerKwin(platform::DesktopRow{Ids{"a", "b"}});
    EXPECT_EQ(spaces(), (Ids{"[a]", "b"}));
    setRoot("_NET_DESKTOP_NAMES", {1});
    deliver(20ms);
    answerKwin(std::nullopt);
    EXPECT_EQ(spaces(), Ids()) << "they may have moved";
}

class X11SpaceServerOnOpenbox : public X11SpaceServerTest {
  protected:
    X11SpaceServerOnOpenbox() : X11SpaceServerTest(DesktopOptions{}) {}
};

TEST_F(X11SpaceServerOnOpenbox, NoticesThatItWasKilled) {
    startServer();
    const auto before = spaces();
    ASSERT_EQ(before.size(), 4U);
    desktop.windowManager().signal(SIGKILL);
    EXPECT_TRUE(waitUntil([&] {
        deliver(20ms);
        return spaces().empty();
    }));
    desktop.startWindowManager();
    deliver(400ms);
    EXPECT_EQ(spaces(), before);
    EXPECT_EQ(windowManagers, 1);
}

}  // namespace
}  // namespace desktop_test
