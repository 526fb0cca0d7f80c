// The application's hotkeys, by keys alone, with real window managers.

#include <gtest/gtest.h>

#include "tests/desktop/InterfaceDesktop.h"
#include "tests/support/PlainWindow.h"

using namespace desktop_test;

namespace {

class HotkeysOnDesktop : public testing::Test {
  protected:
    explicit HotkeysOnDesktop(WindowManager windowManager)
        : desktop_({.windowManager = {.kind = windowManager, .desktops = 4}}) {}

    void start() {
        ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
        ASSERT_TRUE(waitUntil([&] { return setting("KeyboardShortcuts_toggleKillSwitch").is_string(); }));
        press(XK_T);
        ASSERT_TRUE(desktop_.hasKeyboard("Tag This Space"));
        desktop_.type("mail");
        desktop_.press(XK_Return);
        ASSERT_TRUE(desktop_.waitForLabels({"mail"}));
        ASSERT_TRUE(comesToBeSeen(true));
    }
    void hold(xcb_keysym_t key) {
        for (const auto each : {XK_Control_L, XK_Alt_L, XK_Super_L, int(key)})
            hands_.pressKey(hands_.keyFor(static_cast<xcb_keysym_t>(each)));
    }
    void letGo(xcb_keysym_t key) {
        for (const auto each : {int(key), XK_Super_L, XK_Alt_L, XK_Control_L})
            hands_.releaseKey(hands_.keyFor(static_cast<xcb_keysym_t>(each)));
    }
    void press(xcb_keysym_t key) {
        hold(key);
        letGo(key);
    }
    bool isSeen() { return !desktop_.x().shape(desktop_.window("mail"), ShapeKind::Bounding).empty(); }
    bool comesToBeSeen(bool seen) {
        return waitUntil([&] { return isSeen() == seen; });
    }
    int height() { return desktop_.x().geometry(desktop_.window("mail"))->height; }
    bool comesToHave(const std::function<bool(int)>& expected) {
        return waitUntil([&] { return expected(height()); });
    }
    // While the application is not there.
    void forget(const char* key) {
        std::ifstream file(desktop_.settingsFile());
        auto settings = nlohmann::json::parse(file);
        settings.erase(key);
        desktop_.writeSettings(settings);
    }
    bool comesToBeStored(const char* name, const nlohmann::json& shortcut) {
        return waitUntil(
            [&] { return setting(("KeyboardShortcuts_" + std::string(name)).c_str()) == shortcut; });
    }
    // Whether another program could have the key.
    bool isFree(xcb_keysym_t key) {
        constexpr std::uint16_t kModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
        auto& x = desktop_.x();
        const auto code = hands_.keyFor(key);
        const auto grab = xcb_grab_key_checked(x.connection(), 0, x.root(), kModifiers, code,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const Reply<xcb_generic_error_t> error(xcb_request_check(x.connection(), grab));
        xcb_ungrab_key(x.connection(), code, x.root(), kModifiers);
        x.synchronize();
        return !error;
    }
    // Presses a key again and again, each time when the settings show that they have taken the one before.
    void pressAndSee(xcb_keysym_t key, int times = 1) {
        const auto place = desktop_.x().geometry(desktop_.shown("orvellos Settings")).value();
        for (int i = 0; i < times; ++i) {
            const auto before = takePicture(desktop_.x(), place);
            desktop_.press(key);
            ASSERT_TRUE(waitUntil([&] { return takePicture(desktop_.x(), place) != before; })) << i;
        }
    }
    // Opens the settings and moves the keyboard to the first of the shortcuts.
    void goToShortcuts() {
        constexpr int kControlsBefore = 8;
        ASSERT_NO_FATAL_FAILURE(desktop_.choose(menu_row::kSettings));
        ASSERT_TRUE(desktop_.hasKeyboard("orvellos Settings"));
        pressAndSee(XK_Tab, kControlsBefore + 1);
    }
    // Whether the header bar of Mission Control comes to be seen instead of the tag, or is gone.
    bool comesToBeBig(bool big) {
        return waitUntil([&] {
            const auto bar = desktop_.x().shape(desktop_.window("mail", true), ShapeKind::Bounding);
            return bar.empty() != big && isSeen() != big;
        });
    }
    nlohmann::json setting(const char* key) {
        std::ifstream file(desktop_.settingsFile());
        const auto settings = nlohmann::json::parse(file, nullptr, false);
        return settings.is_object() && settings.contains(key) ? settings[key] : nlohmann::json();
    }

    InterfaceDesktop desktop_;
    InputDevices hands_ = desktop_.devices();
};

class HotkeyTest : public HotkeysOnDesktop, public testing::WithParamInterface<WindowManager> {
  protected:
    HotkeyTest() : HotkeysOnDesktop(GetParam()) {}
};

class KwinHotkeyTest : public HotkeysOnDesktop {
  protected:
    KwinHotkeyTest() : HotkeysOnDesktop(WindowManager::Kwin) {}
};

TEST_P(HotkeyTest, EachDoesItsWorkAndNoneReachesAnotherProgram) {
    PlainWindow below(desktop_.display(), {.frame = {40, 40, 300, 700}});
    ASSERT_NO_FATAL_FAILURE(start());
    press(XK_T);
    EXPECT_TRUE(desktop_.hasKeyboard("Edit Tag"));
    press(XK_T);
    EXPECT_TRUE(desktop_.isGone("Edit Tag"));

    hands_.click(60, 600);
    ASSERT_TRUE(waitUntil([&] { return desktop_.x().activeWindow() == below.id(); }));
    press(XK_H);
    EXPECT_TRUE(comesToBeSeen(false));
    press(XK_H);
    EXPECT_TRUE(comesToBeSeen(true));
    press(XK_B);
    EXPECT_TRUE(comesToBeBig(true));
    press(XK_B);
    EXPECT_TRUE(comesToBeBig(false));
    const int usual = height();
    press(XK_equal);
    EXPECT_TRUE(comesToHave([&](int now) { return now > usual; }));
    press(XK_minus);
    EXPECT_TRUE(comesToHave([&](int now) { return now == usual; }));
    ASSERT_NO_FATAL_FAILURE(desktop_.openMenu());
    press(XK_H);
    EXPECT_TRUE(comesToBeSeen(false)) << "while a menu is open";
    desktop_.press(XK_Escape);
    for (const auto modifier : {XK_Control_L, XK_Super_L}) {
        ASSERT_NO_FATAL_FAILURE(desktop_.openMenu());
        hands_.typeKeys({hands_.keyFor(static_cast<xcb_keysym_t>(modifier)), hands_.keyFor(XK_comma)});
        EXPECT_TRUE(desktop_.hasKeyboard("orvellos Settings")) << "the keys of a row";
        desktop_.press(XK_Escape);
        ASSERT_TRUE(desktop_.isGone("orvellos Settings"));
    }
    press(XK_H);
    ASSERT_TRUE(comesToBeSeen(true));
    ASSERT_NO_FATAL_FAILURE(desktop_.choose(menu_row::kCurrentSpace));
    ASSERT_TRUE(desktop_.waitForLabels({})) << "untagged";
    ASSERT_NO_FATAL_FAILURE(desktop_.openMenu());
    hold(XK_T);
    ASSERT_TRUE(desktop_.hasKeyboard("Tag This Space")) << "a row's that are a hotkey's, too";
    letGo(XK_T);
    desktop_.type("code");
    desktop_.press(XK_Return);
    EXPECT_TRUE(desktop_.waitForLabels({"code"})) << "once used they are used up";
    const auto& keys = below.keyPresses();
    for (const auto letter : {XK_H, XK_B, XK_equal, XK_minus})
        EXPECT_EQ(std::ranges::count(keys, hands_.keyFor(static_cast<xcb_keysym_t>(letter))), 0);
}

TEST_P(HotkeyTest, APeekLastsAsLongAsItsKeyIsHeld) {
    desktop_.writeSettings({{"visibilityMode", "hiddenDuringWork"}});
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(comesToBeSeen(false)) << "once its glance is over";
    hold(XK_P);
    ASSERT_TRUE(comesToBeSeen(true));
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < std::chrono::seconds(3)) ASSERT_TRUE(isSeen());
    letGo(XK_P);
    EXPECT_TRUE(comesToBeSeen(false));
}

TEST_P(HotkeyTest, OpensMissionControlWithBigTags) {
    ASSERT_NO_FATAL_FAILURE(start());
    press(XK_Up);
    EXPECT_TRUE(comesToBeBig(true));
    EXPECT_TRUE(comesToBeBig(false)) << "no overview comes up here";
}

TEST_P(HotkeyTest, ARecordedOneOpensTheQuickSwitcher) {
    desktop_.writeSettings(
        {{"KeyboardShortcuts_quickSwitcher", R"({"carbonKeyCode":38,"carbonModifiers":6400})"}});
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    ASSERT_TRUE(waitUntil([&] { return setting("KeyboardShortcuts_peekTags").is_string(); }));
    press(XK_J);
    ASSERT_TRUE(desktop_.hasKeyboard("Jump to Space"));
    desktop_.press(XK_Escape);
    ASSERT_TRUE(desktop_.isGone("Jump to Space"));
    press(XK_J);
    ASSERT_TRUE(desktop_.hasKeyboard("Jump to Space"));
    desktop_.type("p 2");
    desktop_.press(XK_BackSpace);
    desktop_.type("3");
    desktop_.press(XK_Return);
    EXPECT_TRUE(waitUntil([&] { return desktop_.x().currentDesktop() == 2U; }));
    EXPECT_TRUE(desktop_.isGone("Jump to Space"));
}

TEST_P(HotkeyTest, AReRecordedOneWorksAtOnceAndAClearedOneNeverAgain) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(goToShortcuts());
    pressAndSee(XK_Tab, 3);
    press(XK_T);
    ASSERT_TRUE(waitUntil([&] { return desktop_.alert() != 0; })) << "these keys are another name's";
    EXPECT_EQ(desktop_.shown("Edit Tag"), 0U) << "and did not do its work";
    desktop_.press(XK_Return);
    ASSERT_TRUE(desktop_.hasKeyboard("orvellos Settings"));
    pressAndSee(XK_space);
    press(XK_K);
    EXPECT_TRUE(comesToBeStored("toggleKillSwitch", R"({"carbonKeyCode":40,"carbonModifiers":6400})"));
    ASSERT_TRUE(waitUntil([&] { return isFree(XK_H); })) << "given back once the new one is taken";
    press(XK_H);
    press(XK_K);
    EXPECT_TRUE(comesToBeSeen(false)) << "the new one alone";
    press(XK_K);
    EXPECT_TRUE(comesToBeSeen(true));
    pressAndSee(XK_Tab);
    desktop_.press(XK_BackSpace);
    EXPECT_TRUE(comesToBeStored("toggleEmbiggen", false));

    desktop_.application().signal(SIGTERM);
    EXPECT_EQ(desktop_.application().wait(), 0);
    forget("KeyboardShortcuts_peekTags");
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    ASSERT_TRUE(waitUntil([&] { return setting("KeyboardShortcuts_peekTags").is_string(); }))
        << "the last one";
    ASSERT_TRUE(comesToBeSeen(true));
    const int usual = height();
    press(XK_B);
    press(XK_equal);
    EXPECT_TRUE(comesToHave([&](int now) { return now > usual; }));
    EXPECT_TRUE(desktop_.x().shape(desktop_.window("mail", true), ShapeKind::Bounding).empty()) << "not big";
    EXPECT_EQ(setting("KeyboardShortcuts_toggleEmbiggen"), false);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, HotkeyTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4, WindowManager::Kwin),
                         [](const auto& tested) { return nameOf(tested.param); });

TEST_F(KwinHotkeyTest, AsksBeforeItTakesAShortcutOfTheDesktops) {
    ASSERT_NO_FATAL_FAILURE(desktop_.startApplication());
    ASSERT_NO_FATAL_FAILURE(goToShortcuts());
    const auto closeWindow = R"({"carbonKeyCode":118,"carbonModifiers":2048})";
    for (const bool accepted : {false, true}) {
        for (const auto each : {XK_Alt_L, XK_F4})
            hands_.pressKey(hands_.keyFor(static_cast<xcb_keysym_t>(each)));
        for (const auto each : {XK_F4, XK_Alt_L})
            hands_.releaseKey(hands_.keyFor(static_cast<xcb_keysym_t>(each)));
        ASSERT_TRUE(waitUntil([&] { return desktop_.alert() != 0; }))
            << "the keys reach the field all the same";
        EXPECT_NE(setting("KeyboardShortcuts_tagThisSpace"), closeWindow);
        desktop_.press(accepted ? XK_Return : XK_Escape);
        ASSERT_TRUE(desktop_.hasKeyboard("orvellos Settings"));
        if (!accepted) pressAndSee(XK_space);
    }
    EXPECT_TRUE(comesToBeStored("tagThisSpace", closeWindow));
}

TEST(HotkeyStorageTest, AClearedOneStaysClearedAndATakenOneIsReported) {
    InterfaceDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    auto& x = desktop.x();
    const auto hands = desktop.devices();
    xcb_grab_key(x.connection(), 0, x.root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4,
                 hands.keyFor(XK_B), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    x.synchronize();
    desktop.writeSettings(
        {{"KeyboardShortcuts_toggleKillSwitch", false},
         {"KeyboardShortcuts_biggerLabel", R"({"carbonKeyCode":9999,"carbonModifiers":6400})"}});
    ASSERT_NO_FATAL_FAILURE(desktop.startApplication());
    EXPECT_TRUE(waitUntil([&] {
        const auto output = desktop.application().standardOutput();
        return output.find("Error registering hotkey ⌃⌥⌘B: -9878\n") != std::string::npos &&
               output.find("Error registering hotkey ⌃⌥⌘#9999: -50\n") != std::string::npos;
    }));
    std::ifstream file(desktop.settingsFile());
    EXPECT_EQ(nlohmann::json::parse(file).at("KeyboardShortcuts_toggleKillSwitch"), false);
}

}  // namespace
