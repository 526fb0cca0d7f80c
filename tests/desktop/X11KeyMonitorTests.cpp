// The keys of other programs, as the X11 layer reports them on a real server.

#include "platform/x11/connection/Extensions.h"
#include "platform/x11/input/X11KeyMonitor.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <csignal>

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
constexpr xcb_keycode_t kA = 38, kW = 25, kZ = 52, kF3 = 69, kUp = 111, kLeft = 113, kRight = 114;
constexpr xcb_keycode_t kControlKey = 37, kRightControlKey = 105, kShiftKey = 50, kAltKey = 64;
constexpr xcb_keycode_t kSuperKey = 133, kRightSuperKey = 134, kCapsLockKey = 66;

constexpr KeyEvent kOverview{160, 0};

// A desktop with another program's window that has the keyboard, and a monitor whose held keys repeat in
// virtual time.
class WatchedDesktop : public PrivateDesktop {
  public:
    explicit WatchedDesktop(WindowManagerOptions windowManager = {.kind = WindowManager::None})
        : PrivateDesktop({.windowManager = std::move(windowManager)}),
          window(display()),
          connection(openWithExtensions(display().c_str(), kGenerousDeadline)),
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
    // Makes these the desktop's own shortcuts, all with one meaning.
    void setShortcuts(const std::vector<KeyChord>& chords, const KeyEvent& meaning) {
        std::vector<TranslatedShortcut> shortcuts;
        shortcuts.reserve(chords.size());
        for (const auto& chord : chords) shortcuts.push_back({chord, meaning});
        monitor.setShortcuts(shortcuts);
    }
    // The keys seen since the last call, after everything that was typed.
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
        {"Control-A", {kControlKey, kA}, {{0, kControl}}},
        {"right Control", {kRightControlKey, kA}, {{0, kControl}}},
        {"Shift-Option-Control-A", {kShiftKey, kAltKey, kControlKey, kA}, {{0, kShift | kOption | kControl}}},
        {"two keys under one modifier", {kSuperKey, kA, kZ}, {{0, kCommand}, {6, kCommand}}},
        {"keys that no desktop has here", {kControlKey, kUp, kLeft, kRight}, {}},
        {"nor these", {kF3}, {}},
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
    desktop.type({kControlKey, kA});
    EXPECT_EQ(desktop.take(), (Events{{0, kControl}}));
}

TEST(X11KeyMonitorTest, KnowsTheModifiersThatWereThereBefore) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    desktop.devices().pressKey(kSuperKey);
    MainLoop mainLoop;
    const auto connection = openWithExtensions(desktop.display().c_str(), kGenerousDeadline);
    XEvents events(*connection, mainLoop.runLoop, mainLoop.runLoop);
    EXPECT_EQ(X11Keyboard(*connection, events, mainLoop.runLoop).modifierFlags(), kCommand);
}

TEST(X11KeyMonitorTest, IsInactiveWhenTheServerDoesNotAnswer) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    MainLoop mainLoop;
    const auto connection = openWithExtensions(desktop.display().c_str(), kGenerousDeadline);
    XEvents events(*connection, mainLoop.runLoop, mainLoop.runLoop);
    connection->setPatience(std::chrono::milliseconds(20));
    connection->beginTurn();
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
    desktop.type({kControlKey, kA});
    ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return releases == 2; }));
    desktop.ownWindowHasFocus = false;
    EXPECT_EQ(desktop.take(), Events{});
    releases = 0;
    desktop.subscription.cancel();
    desktop.type({kControlKey, kA});
    ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return releases == 2; }));
    EXPECT_EQ(desktop.seen, Events{});
}

TEST(X11KeyMonitorTest, RepeatsAHeldKeyUntilItComesUpOrAnotherIsHeld) {
    WatchedDesktop desktop;
    const auto repeat = desktop.keyboard.repeatOf(kRight).value();
    const KeyEvent right{124, kControl};
    desktop.setShortcuts({{XKB_KEY_Right, kControl}}, right);
    auto hands = desktop.devices();
    hands.pressKey(kControlKey);
    hands.pressKey(kRight);
    ASSERT_TRUE(desktop.waitForCount(1));
    desktop.time.advance(repeat.delay - Duration(1));
    EXPECT_EQ(desktop.seen, (Events{right}));
    desktop.time.advance(Duration(1) + 2 * repeat.interval);
    EXPECT_EQ(desktop.seen, (Events{right, right, right, right}));

    desktop.seen.clear();
    hands.pressKey(kZ);
    hands.releaseKey(kRight);
    hands.pressKey(kShiftKey);
    ASSERT_TRUE(
        desktop.mainLoop.runUntil([&] { return desktop.keyboard.modifierFlags() == (kControl | kShift); }));
    desktop.time.advance(repeat.delay);
    EXPECT_EQ(desktop.seen, (Events{{6, kControl}, {6, kControl | kShift}}));

    hands.releaseKey(kZ);
    hands.releaseKey(kShiftKey);
    hands.releaseKey(kControlKey);
    EXPECT_EQ(desktop.take().size(), 2U);
    desktop.time.advance(2 * repeat.delay);
    EXPECT_EQ(desktop.seen, Events{});
}

TEST(X11KeyMonitorTest, RepeatsNothingForEverNorWhereTheUserTurnedItOff) {
    WatchedDesktop desktop;
    desktop.devices().pressKey(kA);
    ASSERT_TRUE(desktop.waitForCount(1));
    desktop.time.advance(std::chrono::minutes(2));
    desktop.seen.clear();
    desktop.time.advance(std::chrono::minutes(2));
    EXPECT_EQ(desktop.seen, Events{});
    desktop.devices().releaseKey(kA);

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

TEST(X11KeyMonitorTest, ReportsAShortcutByItsMeaningWhereTheLayoutHasIt) {
    WatchedDesktop desktop;
    constexpr xcb_keycode_t kEqualKey = 21, kSemicolonKey = 47;
    desktop.setShortcuts({{'w', kCommand}, {'+', kCommand}, {XKB_KEY_Cyrillic_zhe, kCommand}}, kOverview);
    const auto typeAll = [&] {
        desktop.type({kSuperKey, kW});
        desktop.type({kSuperKey, kZ});
        desktop.type({kSuperKey, kSemicolonKey});
        desktop.type({kSuperKey, kControlKey, kW});
        desktop.type({kW});
        return desktop.take();
    };
    const auto useLayout = [&](const char* layout, xcb_keycode_t key, xcb_keysym_t symbol) {
        EXPECT_EQ(desktop.run({"setxkbmap", layout}).status, 0);
        ASSERT_TRUE(desktop.mainLoop.runUntil([&] { return desktop.keyboard.gives(key, symbol, false); }));
    };
    const KeyEvent w{13, kCommand}, z{6, kCommand}, semicolon{41, kCommand};
    const KeyEvent withControl{13, kCommand | kControl}, alone{13, 0};
    EXPECT_EQ(typeAll(), (Events{kOverview, z, semicolon, withControl, alone}));
    desktop.type({kSuperKey, kShiftKey, kEqualKey});
    desktop.type({kSuperKey, kEqualKey});
    EXPECT_EQ(desktop.take(), (Events{kOverview, {24, kCommand}}));

    ASSERT_NO_FATAL_FAILURE(useLayout("fr", kZ, 'w'));
    EXPECT_EQ(typeAll(), (Events{w, kOverview, semicolon, withControl, alone}));
    ASSERT_NO_FATAL_FAILURE(useLayout("ru", kSemicolonKey, XKB_KEY_Cyrillic_zhe));
    EXPECT_EQ(typeAll(), (Events{w, z, kOverview, withControl, alone}));
}

TEST(X11KeyMonitorTest, ReportsATapOnSuperAlone) {
    WatchedDesktop desktop;
    desktop.setShortcuts(superTaps(), kOverview);
    const Events tap = {kOverview};
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

}  // namespace
}  // namespace x11
}  // namespace platform
