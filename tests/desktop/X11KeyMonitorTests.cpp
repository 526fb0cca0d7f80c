// The keys of other programs, as the X11 layer reports them on a real server.

#include "platform/x11/X11KeyMonitor.h"

#include <gtest/gtest.h>

#include <csignal>

#include "platform/freedesktop/KdeOverviewKeys.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PlainWindow.h"
#include "tests/support/PrivateDesktop.h"

namespace platform {

void PrintTo(const KeyEvent& event, std::ostream* out) {
    *out << event.keyCode << std::hex << " 0x" << event.modifierFlags << std::dec;
}

namespace x11 {
namespace {

using namespace desktop_test;
using namespace platform::modifier;

// X key codes of places on the keyboard.
constexpr xcb_keycode_t kA = 38, kW = 25, kZ = 52, kF3 = 69, kF8 = 74, kUp = 111, kLeft = 113, kRight = 114;
constexpr xcb_keycode_t kControlKey = 37, kRightControlKey = 105, kShiftKey = 50, kAltKey = 64;
constexpr xcb_keycode_t kSuperKey = 133, kRightSuperKey = 134, kCapsLockKey = 66;

constexpr std::uint32_t kQtMetaW = 0x10000057;

// A desktop with another program's window that has the keyboard, and a monitor whose held keys repeat in
// virtual time.
class WatchedDesktop : public PrivateDesktop {
  public:
    explicit WatchedDesktop(WindowManagerOptions windowManager = {.kind = WindowManager::None})
        : PrivateDesktop({.windowManager = std::move(windowManager)}),
          window(display()),
          connection(XConnection::open(display().c_str(), kGenerousDeadline)),
          events(*connection, mainLoop.runLoop, mainLoop.runLoop),
          input(*connection, events),
          keyboard(*connection, events, mainLoop.runLoop),
          monitor(input, keyboard, time, [this] { return ownWindowHasFocus; }),
          subscription(
              monitor.addGlobalKeyDownMonitor([this](const auto& event) { seen.push_back(event); })) {
        devices().movePointer(300, 250);
        connection->synchronize();
    }

    void type(std::initializer_list<xcb_keycode_t> keys) { devices().typeKeys(keys); }
    // What has been seen since the last call, after everything that was typed.
    std::vector<KeyEvent> take() {
        constexpr std::uint16_t kF20 = 90;  // a key that no test types
        type({198});
        const auto isEnd = [](const KeyEvent& event) { return event.keyCode == kF20; };
        EXPECT_TRUE(mainLoop.runUntil([&] { return std::ranges::any_of(seen, isEnd); }));
        std::erase_if(seen, isEnd);
        return std::exchange(seen, {});
    }
    bool waitForCount(std::size_t count) {
        return mainLoop.runUntil([&] { return seen.size() >= count; });
    }

    PlainWindow window;
    MainLoop mainLoop;
    simulated::SimulatedRunLoop time;
    std::unique_ptr<XConnection> connection;
    XEvents events;
    RawInput input;
    X11Keyboard keyboard;
    bool ownWindowHasFocus = false;
    std::vector<KeyEvent> seen;
    X11KeyMonitor monitor;
    Subscription subscription;
};

using Events = std::vector<KeyEvent>;

TEST(X11KeyMonitorTest, SeesTheKeysOfOtherProgramsWithTheirModifiersAndTakesNone) {
    WatchedDesktop desktop({.kind = WindowManager::Openbox});
    ASSERT_TRUE(waitUntil([&] { return desktop.x().activeWindow() == desktop.window.id(); }));
    struct Row {
        const char* name;
        std::initializer_list<xcb_keycode_t> keys;
        Events expected;
    };
    const Row rows[] = {
        {"a letter", {kA}, {{0, 0}}},
        {"Control-Up", {kControlKey, kUp}, {{126, kControl}}},
        {"right Control", {kRightControlKey, kUp}, {{126, kControl}}},
        {"Shift-Option-Control-Left",
         {kShiftKey, kAltKey, kControlKey, kLeft},
         {{123, kShift | kOption | kControl}}},
        {"Command-F3", {kSuperKey, kF3}, {{99, kCommand}}},
        {"two keys under one modifier", {kControlKey, kLeft, kRight}, {{123, kControl}, {124, kControl}}},
        {"modifiers alone", {kControlKey, kShiftKey, kAltKey, kSuperKey}, {}},
        {"Caps Lock put on", {kCapsLockKey}, {}},
        {"under Caps Lock", {kA}, {{0, kCapsLock}}},
        {"Caps Lock put off", {kCapsLockKey}, {}},
        {"nothing left of it", {kA}, {{0, 0}}},
    };
    std::vector<xcb_keycode_t> typed;
    for (const auto& [name, keys, expected] : rows) {
        SCOPED_TRACE(name);
        desktop.type(keys);
        EXPECT_EQ(desktop.take(), expected);
        typed.insert(typed.end(), keys);
        typed.push_back(198);
    }
    EXPECT_TRUE(waitUntil([&] { return desktop.window.keyPresses() == typed; }));
}

TEST(X11KeyMonitorTest, SeesKeysWhileAnotherProgramHoldsTheKeyboard) {
    WatchedDesktop desktop;
    auto& x = desktop.x();
    const auto cookie = xcb_grab_keyboard(x.connection(), 0, x.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    const desktop_test::Reply<xcb_grab_keyboard_reply_t> grab(
        xcb_grab_keyboard_reply(x.connection(), cookie, nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    desktop.type({kControlKey, kUp});
    EXPECT_EQ(desktop.take(), (Events{{126, kControl}}));
}

TEST(X11KeyMonitorTest, KnowsTheModifiersThatWereThereBefore) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    desktop.devices().pressKey(kSuperKey);
    MainLoop mainLoop;
    const auto connection = XConnection::open(desktop.display().c_str(), kGenerousDeadline);
    XEvents events(*connection, mainLoop.runLoop, mainLoop.runLoop);
    EXPECT_EQ(X11Keyboard(*connection, events, mainLoop.runLoop).modifierFlags(), kCommand);
}

TEST(X11KeyMonitorTest, IsInactiveWhenTheServerDoesNotAnswer) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    MainLoop mainLoop;
    const auto connection = XConnection::open(desktop.display().c_str(), kGenerousDeadline);
    XEvents events(*connection, mainLoop.runLoop, mainLoop.runLoop);
    connection->setPatience(std::chrono::milliseconds(20));
    desktop.server().signal(SIGSTOP);
    RawInput input(*connection, events);
    X11Keyboard keyboard(*connection, events, mainLoop.runLoop);
    X11KeyMonitor monitor(input, keyboard, mainLoop.runLoop);
    EXPECT_FALSE(monitor.addGlobalKeyDownMonitor([](const auto&) {}).isActive());
    desktop.server().signal(SIGCONT);
}

TEST(X11KeyMonitorTest, SeesNothingWhileAWindowOfItsOwnHasTheKeyboardNorAfterItsEnd) {
    WatchedDesktop desktop;
    std::size_t releases = 0;
    const auto counter = desktop.input.subscribe(
        [&](const RawInputEvent& event) { releases += event.type == XCB_INPUT_RAW_KEY_RELEASE ? 1 : 0; });
    desktop.ownWindowHasFocus = true;
    desktop.type({kControlKey, kUp});
    ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return releases == 2; }));
    desktop.ownWindowHasFocus = false;
    EXPECT_EQ(desktop.take(), Events{});
    releases = 0;
    desktop.subscription.cancel();
    desktop.type({kControlKey, kUp});
    ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return releases == 2; }));
    EXPECT_EQ(desktop.seen, Events{});
}

TEST(X11KeyMonitorTest, RepeatsAHeldKeyUntilItComesUpOrAnotherIsHeld) {
    WatchedDesktop desktop;
    const auto repeat = desktop.keyboard.repeatOf(kRight).value();
    const KeyEvent right{124, kControl};
    auto hands = desktop.devices();
    hands.pressKey(kControlKey);
    hands.pressKey(kRight);
    ASSERT_TRUE(desktop.waitForCount(1));
    desktop.time.advance(repeat.delay - Duration(1));
    EXPECT_EQ(desktop.seen, (Events{right}));
    desktop.time.advance(Duration(1) + 2 * repeat.interval);
    EXPECT_EQ(desktop.seen, (Events{right, right, right, right}));

    desktop.seen.clear();
    hands.pressKey(kLeft);
    hands.releaseKey(kRight);
    hands.pressKey(kShiftKey);
    ASSERT_TRUE(
        desktop.mainLoop.runUntil([&] { return desktop.keyboard.modifierFlags() == (kControl | kShift); }));
    desktop.time.advance(repeat.delay);
    EXPECT_EQ(desktop.seen, (Events{{123, kControl}, {123, kControl | kShift}}));

    hands.releaseKey(kLeft);
    hands.releaseKey(kShiftKey);
    hands.releaseKey(kControlKey);
    EXPECT_EQ(desktop.take().size(), 2U);
    desktop.time.advance(2 * repeat.delay);
    EXPECT_EQ(desktop.seen, Events{});
}

TEST(X11KeyMonitorTest, RepeatsNothingForEverNorWhereTheUserTurnedItOff) {
    WatchedDesktop desktop;
    desktop.devices().pressKey(kRight);
    ASSERT_TRUE(desktop.waitForCount(1));
    desktop.time.advance(std::chrono::minutes(2));
    desktop.seen.clear();
    desktop.time.advance(std::chrono::minutes(2));
    EXPECT_EQ(desktop.seen, Events{});
    desktop.devices().releaseKey(kRight);

    EXPECT_EQ(desktop.run({"xset", "r", "off"}).status, 0);
    EXPECT_TRUE(desktop.mainLoop.runUntil([&] { return !desktop.keyboard.repeatOf(kRight); }));
    EXPECT_EQ(desktop.run({"xset", "r", "on", "r", "rate", "300", "50"}).status, 0);
    EXPECT_TRUE(desktop.mainLoop.runUntil([&] {
        const auto repeat = desktop.keyboard.repeatOf(kRight);
        return repeat && repeat->delay == std::chrono::milliseconds(300) &&
               repeat->interval == std::chrono::milliseconds(20);
    }));
    EXPECT_FALSE(desktop.keyboard.repeatOf(kControlKey));
}

TEST(X11KeyMonitorTest, ReportsTheOverviewShortcutWhereTheLayoutHasIt) {
    WatchedDesktop desktop;
    const std::uint32_t qtKeys[] = {kQtMetaW, 0x10000000 | '+'};
    desktop.monitor.setOverviewShortcuts(shortcutsOfQtKeys(qtKeys));
    const auto typeAll = [&] {
        desktop.type({kSuperKey, kW});
        desktop.type({kSuperKey, kZ});
        desktop.type({kSuperKey, kControlKey, kW});
        desktop.type({kW});
        return desktop.take();
    };
    constexpr auto kCommandControl = kCommand | kControl;
    EXPECT_EQ(typeAll(), (Events{{160, kCommand}, {6, kCommand}, {13, kCommandControl}, {13, 0}}));
    constexpr xcb_keycode_t kEqualKey = 21;
    desktop.type({kSuperKey, kShiftKey, kEqualKey});
    desktop.type({kSuperKey, kEqualKey});
    EXPECT_EQ(desktop.take(), (Events{{160, kCommand | kShift}, {24, kCommand}}));

    EXPECT_EQ(desktop.run({"setxkbmap", "fr"}).status, 0);
    ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return desktop.keyboard.gives(kZ, 'w', false); }));
    EXPECT_EQ(typeAll(), (Events{{13, kCommand}, {160, kCommand}, {13, kCommandControl}, {13, 0}}));
}

TEST(X11KeyMonitorTest, ReportsATapOnSuperAlone) {
    WatchedDesktop desktop;
    desktop.monitor.setOverviewShortcuts(superTaps());
    const Events tap = {{160, kCommand}};
    desktop.type({kSuperKey});
    EXPECT_EQ(desktop.take(), tap);
    desktop.type({kRightSuperKey});
    EXPECT_EQ(desktop.take(), tap);
    desktop.type({kSuperKey, kA});
    EXPECT_EQ(desktop.take(), (Events{{0, kCommand}}));
    desktop.type({kSuperKey, kShiftKey});
    EXPECT_EQ(desktop.take(), Events{});
    desktop.devices().pressKey(kSuperKey);
    desktop.devices().click(300, 250);
    desktop.devices().releaseKey(kSuperKey);
    EXPECT_EQ(desktop.take(), Events{});
}

TEST(X11KeyMonitorTest, ReportsKwinsOwnOverviewShortcuts) {
    WatchedDesktop desktop({.kind = WindowManager::Kwin, .composited = true});
    freedesktop::SystemdLibrary library;
    freedesktop::SessionBus bus(library, desktop.mainLoop.runLoop, desktop.mainLoop.runLoop,
                                [&] { return desktop.environment.at("DBUS_SESSION_BUS_ADDRESS"); });
    freedesktop::KdeOverviewKeys overviewKeys(bus);
    const std::vector<std::uint32_t> metaWAndMetaF8{kQtMetaW, 0x11000037};
    std::optional<std::vector<std::uint32_t>> answer;
    // KWin tells the daemon of its effects' shortcuts when it has loaded them.
    for (int attempt = 0; attempt < 100 && answer != metaWAndMetaF8; ++attempt) {
        answer.reset();
        overviewKeys.request([&](const auto& keys) { answer = keys; });
        ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return answer.has_value(); }));
        const auto next = desktop.mainLoop.runLoop.now() + std::chrono::milliseconds(100);
        (void)desktop.mainLoop.runUntil(
            [&] { return answer == metaWAndMetaF8 || desktop.mainLoop.runLoop.now() >= next; });
    }
    ASSERT_EQ(answer, metaWAndMetaF8);
    desktop.monitor.setOverviewShortcuts(shortcutsOfQtKeys(*answer));

    const auto openEffects = [&] {
        return desktop.bus()
            .stringList("org.kde.KWin", "/Effects", "org.kde.kwin.Effects", "activeEffects")
            .value_or(std::vector<std::string>());
    };
    // The daemon answers before it has the keys, and KWin takes its time.
    std::size_t presses = 0;
    EXPECT_TRUE(waitUntil([&] {
        desktop.type({kSuperKey, kF8});
        ++presses;
        return waitUntil([&] { return openEffects() == std::vector<std::string>{"desktopgrid"}; },
                         std::chrono::seconds(3));
    }));
    desktop.type({kSuperKey, kW});
    EXPECT_EQ(desktop.take(), Events(presses + 1, {160, kCommand}));
}

}  // namespace
}  // namespace x11
}  // namespace platform
