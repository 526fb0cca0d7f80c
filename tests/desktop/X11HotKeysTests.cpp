// Hot keys on a real server: who gets a key, and how often.

#include "platform/x11/connection/Extensions.h"
#include "platform/x11/input/X11HotKeys.h"

#include <gtest/gtest.h>

#include "platform/x11/input/X11Keyboard.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PlainWindow.h"
#include "tests/support/PrivateDesktop.h"

namespace platform::x11 {
namespace {

using namespace desktop_test;
using namespace platform::modifier;

// X key codes of places on the keyboard.
constexpr xcb_keycode_t kA = 38, kH = 43, kControlKey = 37, kAltKey = 64, kSuperKey = 133;
constexpr xcb_keycode_t kCapsLockKey = 66, kNumLockKey = 77, kShiftKey = 50;
constexpr KeyEvent kControlOptionH = {4, kControl | kOption};

// A program with hot keys beside another one's window, which has the keyboard.
class HotKeysTest : public testing::Test {
  protected:
    HotKeysTest() {
        desktop_.devices().movePointer(300, 250);
        EXPECT_EQ(hotKeys_->registerHotKey(1, kControlOptionH), hot_key_status::kRegistered);
        connection_->synchronize();
    }

    void type(std::initializer_list<xcb_keycode_t> keys) { desktop_.devices().typeKeys(keys); }
    // The hot keys' events since the last call, as "+1" and "-1", and "A" for a key of the window's.
    std::string told() {
        type({kA});
        const auto isThere = [this] {
            const auto& keys = window_.keyPresses();
            return std::count(keys.begin(), keys.end(), kA) > seen_;
        };
        EXPECT_TRUE(mainLoop_.runUntil(isThere));
        ++seen_;
        settle();
        return std::exchange(told_, {});
    }
    // Handles everything that the server has sent so far.
    void settle() {
        connection_->synchronize();
        EXPECT_TRUE(mainLoop_.runUntil([turns = 0]() mutable { return ++turns > 3; }));
    }
    std::vector<xcb_keycode_t> reachedWindow() {
        auto keys = window_.keyPresses();
        std::erase_if(keys, [](auto key) { return key != kH; });
        return keys;
    }
    void grabKeyboard() {
        auto& x = desktop_.x();
        const auto cookie = xcb_grab_keyboard(x.connection(), 0, x.root(), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const Reply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(x.connection(), cookie, nullptr));
        ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    }

    PrivateDesktop desktop_{{.windowManager = {.kind = WindowManager::None}}};
    PlainWindow window_{desktop_.display()};
    MainLoop mainLoop_;
    std::unique_ptr<XConnection> connection_ =
        openWithExtensions(desktop_.display().c_str(), kGenerousDeadline);
    XEvents events_{*connection_, mainLoop_.runLoop, mainLoop_.runLoop};
    RawInput input_{*connection_, events_};
    X11Keyboard keyboard_{*connection_, events_, mainLoop_.runLoop};
    std::unique_ptr<X11HotKeys> hotKeys_ =
        std::make_unique<X11HotKeys>(*connection_, events_, input_, keyboard_);
    std::string told_;
    Subscription subscription_ = hotKeys_->onHotKey([this](const HotKeyEvent& event) {
        told_ += (event.isPressed ? "+" : "-") + std::to_string(event.id);
    });
    std::ptrdiff_t seen_ = 0;
};

TEST_F(HotKeysTest, TakesItsKeysWhateverTheLocksSayAndNoOthers) {
    struct Row {
        const char* name = nullptr;
        std::initializer_list<xcb_keycode_t> keys;
        const char* told = nullptr;
    };
    const Row rows[] = {
        {"the keys", {kControlKey, kAltKey, kH}, "+1-1"},
        {"one modifier less", {kControlKey, kH}, ""},
        {"one more", {kControlKey, kAltKey, kSuperKey, kH}, ""},
        {"Shift as well", {kControlKey, kAltKey, kShiftKey, kH}, ""},
        {"Caps Lock put on", {kCapsLockKey}, ""},
        {"under Caps Lock", {kControlKey, kAltKey, kH}, "+1-1"},
        {"Num Lock put on", {kNumLockKey}, ""},
        {"under both", {kControlKey, kAltKey, kH}, "+1-1"},
        {"Caps Lock put off", {kCapsLockKey}, ""},
        {"under Num Lock", {kControlKey, kAltKey, kH}, "+1-1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        type(row.keys);
        EXPECT_EQ(told(), row.told);
    }
    EXPECT_EQ(reachedWindow().size(), 3U) << "those with other modifiers";
}

TEST_F(HotKeysTest, AHeldKeyIsOnePressAndOneRelease) {
    auto hands = desktop_.devices();
    for (const auto key : {kControlKey, kAltKey, kH}) hands.pressKey(key);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(mainLoop_.runUntil([&] {
        return std::chrono::steady_clock::now() - start > std::chrono::milliseconds(1500);
    })) << "the server repeats keys after 660 ms";
    EXPECT_EQ(told_, "+1");
    for (const auto key : {kControlKey, kAltKey, kH}) hands.releaseKey(key);
    EXPECT_EQ(told(), "+1-1") << "though the modifiers came up first";
}

TEST_F(HotKeysTest, GivesBackWhatItUnregistersOrIsRefused) {
    auto& x = desktop_.x();
    constexpr xcb_keycode_t kF8 = 74;
    xcb_grab_key(x.connection(), 0, x.root(), XCB_MOD_MASK_2, kF8, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    x.synchronize();
    EXPECT_EQ(hotKeys_->registerHotKey(2, {100, 0}), hot_key_status::kAlreadyTaken);
    EXPECT_EQ(hotKeys_->registerHotKey(2, {9999, kControl}), hot_key_status::kNoSuchKey);
    connection_->synchronize();
    type({kF8});
    hotKeys_->unregisterHotKey(1);
    connection_->synchronize();
    type({kControlKey, kAltKey, kH});
    EXPECT_EQ(told(), "");
    EXPECT_EQ(reachedWindow().size(), 1U);
    const auto keys = window_.keyPresses();
    EXPECT_EQ(std::count(keys.begin(), keys.end(), kF8), 1) << "the rest of a refused one is free";
}

TEST_F(HotKeysTest, TakesWhatAMenuOfItsProgramGetsAndDoesNotUse) {
    ASSERT_NO_FATAL_FAILURE(grabKeyboard());
    std::optional<xcb_timestamp_t> start;  // of a press of H
    const auto times = input_.subscribe([&](const RawInputEvent& event) {
        if (event.detail == kH && event.type == XCB_INPUT_RAW_KEY_PRESS) start = event.time;
    });
    type({kControlKey, kAltKey, kH});
    settle();
    EXPECT_EQ(told_, "") << "no menu of its program has got it";
    const auto get = [&](std::uint16_t state, bool isUsed) {
        return hotKeys_->pressInMenu({.key = kH, .state = state, .time = start.value(), .isUsed = isUsed});
    };
    constexpr std::uint16_t kState = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_2;
    EXPECT_FALSE(get(kState, true));
    EXPECT_FALSE(get(XCB_MOD_MASK_1, false)) << "other keys";
    EXPECT_TRUE(get(kState, false));
    EXPECT_EQ(std::exchange(told_, {}), "+1-1") << "it has come up already";

    auto hands = desktop_.devices();
    for (const bool isUsed : {true, false}) {
        start.reset();
        for (const auto key : {kControlKey, kAltKey, kH}) hands.pressKey(key);
        ASSERT_TRUE(mainLoop_.runUntil([&] { return start.has_value(); }));
        EXPECT_EQ(get(kState, isUsed), !isUsed);
        EXPECT_EQ(get(kState, false), !isUsed) << "a held key repeats";
        for (const auto key : {kH, kAltKey, kControlKey}) hands.releaseKey(key);
        settle();
        EXPECT_EQ(std::exchange(told_, {}), isUsed ? "" : "+1-1");
    }
}

TEST_F(HotKeysTest, KeepsItsPlacesAndTellsTheirNamesInEveryLayout) {
    const X11KeyNames names(keyboard_);
    EXPECT_EQ(names.textOf(4) + names.textOf(27) + names.textOf(36) + names.textOf(9999), "h-");
    EXPECT_EQ(desktop_.run({"setxkbmap", "ru"}).status, 0);
    EXPECT_TRUE(mainLoop_.runUntil([&] { return names.textOf(4) == "р"; }));
    type({kControlKey, kAltKey, kH});
    EXPECT_EQ(told(), "+1-1");
    EXPECT_EQ(desktop_.run({"setxkbmap", "us,fr", "-option", "grp:alt_shift_toggle"}).status, 0);
    EXPECT_TRUE(mainLoop_.runUntil([&] { return names.textOf(12) == "q"; }));
    type({kShiftKey, kAltKey});
    EXPECT_TRUE(mainLoop_.runUntil([&] { return names.textOf(12) == "a"; })) << "the second of two layouts";
    type({kControlKey, kAltKey, kH});
    EXPECT_EQ(told(), "+1-1");
}

TEST_F(HotKeysTest, GivesItsKeysBackThoughOneIsHeld) {
    auto hands = desktop_.devices();
    for (const auto key : {kControlKey, kAltKey, kH}) hands.pressKey(key);
    EXPECT_TRUE(mainLoop_.runUntil([&] { return told_ == "+1"; }));
    hotKeys_.reset();
    connection_->synchronize();
    for (const auto key : {kH, kAltKey, kControlKey}) hands.releaseKey(key);
    type({kControlKey, kAltKey, kH});
    EXPECT_TRUE(waitUntil([&] { return reachedWindow().size() == 1U; }));
}

}  // namespace
}  // namespace platform::x11
