// Recording a shortcut: which keys are taken, what is warned of, and what the registry does meanwhile.

#include "KeyboardShortcuts/Recorder.h"

#include "tests/support/ApplicationTest.h"

namespace keyboard_shortcuts {
namespace {

using orvellos::Texts;
using platform::KeyEvent;
namespace key = platform::key;
namespace modifier = platform::modifier;

constexpr std::uint64_t kAll = modifier::kControl | modifier::kOption | modifier::kCommand;
constexpr Name kHide = {"hide", Shortcut{4, carbon::kControl | carbon::kOption | carbon::kCommand}};
constexpr Name kPeek = {"peek", Shortcut{35, carbon::kControl | carbon::kOption | carbon::kCommand}};
constexpr KeyEvent kHideKeys = {4, kAll};
constexpr KeyEvent kPeekKeys = {35, kAll};
constexpr KeyEvent kControlT = {17, modifier::kControl};

class RecorderTest : public testing::Test, KeyUses {
  protected:
    RecorderTest() {
        for (const auto& name : {kHide, kPeek}) {
            registry_.create(name);
            registry_.onKeyDown(name, [this, name] { ran_.push_back(std::string(name.rawValue) + " down"); });
            registry_.onKeyUp(name, [this, name] { ran_.push_back(std::string(name.rawValue) + " up"); });
        }
        active_ = registry_.recorderActiveStatusDidChange(
            [this](bool isActive) { ran_.emplace_back(isActive ? "active" : "inactive"); });
        recorder_.emplace(Recorder::Services{registry_, desktop_.keyNames, desktop_.systemShortcuts,
                                             desktop_.alerts, *this},
                          kPeek);
    }
    [[nodiscard]] std::optional<std::string> useOf(const KeyEvent& keys, const Name& name) const override {
        EXPECT_EQ(name.rawValue, "peek");
        return keys == kHideKeys ? ownUse_ : std::nullopt;
    }
    // Presses the keys in the field, and waits for the desktop's word.
    void record(const KeyEvent& keys) {
        recorder_->begin();
        EXPECT_TRUE(recorder_->keyDown(keys));
        recorder_->keyUp();
        desktop_.runLoop.advance(platform::seconds(0.1));
    }
    [[nodiscard]] std::optional<std::string> shortcut() const { return registry_.displayText(kPeek); }
    Texts ran() { return std::exchange(ran_, {}); }

    platform::simulated::SimulatedDesktop desktop_;
    Registry registry_{{desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    std::optional<std::string> ownUse_;
    Texts ran_;
    platform::Subscription active_;
    std::optional<Recorder> recorder_;
};

TEST_F(RecorderTest, TakesTheKeysThatMayBeAShortcut) {
    struct Row {
        const char* name = nullptr;
        KeyEvent keys;
        bool isTaken = false;
        bool staysRecording = false;
        const char* shortcut = nullptr;  // afterwards; null for none
    };
    for (const Row& row :
         {Row{"with a modifier", kControlT, true, false, "⌃T"},
          {"a function key", {key::kF3, 0}, true, false, "F3"},
          {"with Caps Lock", {17, modifier::kControl | modifier::kCapsLock}, true, false, "⌃T"},
          {"a letter", {17, 0}, true, true, "⌃⌥⌘P"},
          {"a capital letter", {17, modifier::kShift}, true, true, "⌃⌥⌘P"},
          {"Tab", {key::kTab, 0}, false, true, "⌃⌥⌘P"},
          {"Tab back", {key::kTab, modifier::kShift}, false, true, "⌃⌥⌘P"},
          {"Control and Tab", {key::kTab, modifier::kControl}, true, false, "⌃⇥"},
          {"Escape", {key::kEscape, 0}, true, false, "⌃⌥⌘P"},
          {"Backspace", {key::kDelete, 0}, true, false, nullptr},
          {"Delete", {key::kForwardDelete, 0}, true, false, nullptr}}) {
        SCOPED_TRACE(row.name);
        registry_.setShortcut(kPeek.defaultShortcut, kPeek);
        recorder_->begin();
        EXPECT_EQ(recorder_->text(), "");
        EXPECT_EQ(recorder_->keyDown(row.keys), row.isTaken);
        EXPECT_EQ(recorder_->warning().empty(), !row.isTaken || !row.staysRecording);
        recorder_->keyUp();
        EXPECT_EQ(recorder_->isRecording(), row.staysRecording);
        desktop_.runLoop.advance(platform::seconds(0.1));
        EXPECT_EQ(shortcut(), row.shortcut ? std::optional<std::string>(row.shortcut) : std::nullopt);
        recorder_->end();
    }
    EXPECT_EQ(desktop_.alerts.shown.size(), 0U);
    EXPECT_FALSE(recorder_->keyDown(kControlT)) << "nothing is recorded";
}

TEST_F(RecorderTest, NothingRunsWhileKeysAreRecorded) {
    desktop_.hotKeys.press(kHideKeys);
    recorder_->begin();
    EXPECT_EQ(ran(), (Texts{"hide down", "active"}));
    desktop_.hotKeys.release(kHideKeys);
    EXPECT_EQ(ran(), Texts{"hide up"}) << "it was down before";
    desktop_.hotKeys.press(kHideKeys);
    EXPECT_EQ(recorder_->text(), "⌃⌥⌘H") << "keys that the registry has taken from every field";
    desktop_.hotKeys.press(kPeekKeys);
    EXPECT_EQ(recorder_->text(), "⌃⌥⌘H") << "the first counts";
    desktop_.hotKeys.release(kHideKeys);
    desktop_.hotKeys.release(kPeekKeys);
    EXPECT_EQ(ran(), Texts{"inactive"});
    recorder_->begin();
    recorder_.reset();
    EXPECT_EQ(ran(), (Texts{"active", "inactive"})) << "its window was closed";
    desktop_.hotKeys.press(kPeekKeys);
    EXPECT_EQ(ran(), Texts{"peek down"});
}

TEST_F(RecorderTest, AReRecordedKeyWorksAtOnceAndTheOldOneNoLonger) {
    record(kControlT);
    ran();
    EXPECT_FALSE(desktop_.hotKeys.press(kPeekKeys));
    EXPECT_TRUE(desktop_.hotKeys.press(kControlT));
    EXPECT_TRUE(desktop_.hotKeys.release(kControlT));
    EXPECT_EQ(ran(), (Texts{"peek down", "peek up"}));
}

TEST_F(RecorderTest, WarnsBeforeItTakesWhatIsInUse) {
    ownUse_ = "Hide for screen-sharing";
    record(kHideKeys);
    EXPECT_EQ(desktop_.alerts.shown.back().message, "⌃⌥⌘H is already used by “Hide for screen-sharing”.");
    desktop_.alerts.answer(0);
    EXPECT_EQ(shortcut(), "⌃⌥⌘P");

    desktop_.systemShortcuts.used = {{kControlT, "Show Terminal"}, {{4, modifier::kControl}, ""}};
    record({4, modifier::kControl});
    EXPECT_EQ(desktop_.alerts.shown.back().message, "The desktop already uses ⌃H.");
    record(kControlT);
    EXPECT_EQ(desktop_.alerts.shown.back().message, "The desktop already uses ⌃T for “Show Terminal”.");
    EXPECT_EQ(desktop_.alerts.shown.back().buttons, (Texts{"Use Anyway", "Cancel"}));
    desktop_.alerts.answer(1);
    EXPECT_EQ(shortcut(), "⌃⌥⌘P");
    record(kControlT);
    recorder_.reset();
    desktop_.alerts.answer(0);
    EXPECT_EQ(shortcut(), "⌃T") << "the window was closed before the answer";
}

TEST_F(RecorderTest, SaysWhenAShortcutIsNotInEffect) {
    desktop_.hotKeys.takenKeyCodes = {17};
    record(kControlT);
    EXPECT_EQ(shortcut(), "⌃T");
    EXPECT_EQ(recorder_->warning(), "Not in effect: another program has taken these keys.");
    desktop_.hotKeys.takenKeyCodes.clear();
    record(kControlT);
    EXPECT_EQ(recorder_->warning(), "") << "the same keys again try again";
    desktop_.defaults.set("KeyboardShortcuts_peek", R"({"carbonKeyCode":9999,"carbonModifiers":0})");
    registry_.onKeyDown(kPeek, [] {});
    EXPECT_EQ(recorder_->warning(), "Not in effect: no such keys can be taken.");
}

}  // namespace
}  // namespace keyboard_shortcuts
