// The hotkey registry: what is stored, what is registered and whom a key reaches.

#include "KeyboardShortcuts/Registry.h"

#include "tests/support/ApplicationTest.h"

namespace keyboard_shortcuts {
namespace {

using orvellos::Texts;
using platform::DefaultsValue;
using platform::KeyEvent;

constexpr std::int32_t kModifiers = carbon::kControl | carbon::kOption | carbon::kCommand;
constexpr std::uint64_t kFlags =
    platform::modifier::kControl | platform::modifier::kOption | platform::modifier::kCommand;
constexpr Shortcut kH = {4, kModifiers};
constexpr Shortcut kP = {35, kModifiers};
constexpr KeyEvent kHKeys = {4, kFlags};
constexpr KeyEvent kPKeys = {35, kFlags};
constexpr Name kHide = {"hide", kH};
constexpr Name kPeek = {"peek", kP};
constexpr Name kBare = {"bare", {}};

class RegistryTest : public testing::Test {
  protected:
    RegistryTest() { makeRegistry(); }
    void makeRegistry() {
        registry_.reset();
        registry_ = std::make_unique<Registry>(
            Registry::Services{defaults_, hotKeys_, keyNames_, [this](auto text) { output_ += text; }});
        for (const auto& name : {kHide, kPeek, kBare}) {
            registry_->create(name);
            registry_->onKeyDown(name,
                                 [this, name] { ran_.push_back(std::string(name.rawValue) + " down"); });
            registry_->onKeyUp(name, [this, name] { ran_.push_back(std::string(name.rawValue) + " up"); });
        }
    }
    std::optional<DefaultsValue> stored(const char* name) {
        return defaults_.value(std::string("KeyboardShortcuts_") + name);
    }
    Texts ran() { return std::exchange(ran_, {}); }
    void tap(const KeyEvent& keys) {
        hotKeys_.press(keys);
        hotKeys_.release(keys);
    }

    platform::simulated::SimulatedDefaultsStore defaults_;
    platform::simulated::SimulatedHotKeys hotKeys_;
    platform::simulated::SimulatedKeyNames keyNames_;
    std::string output_;
    Texts ran_;
    std::unique_ptr<Registry> registry_;
};

TEST_F(RegistryTest, StoresDefaultsOnceAndRemembersThatTheyWereTakenAway) {
    EXPECT_EQ(stored("hide"), DefaultsValue(R"({"carbonKeyCode":4,"carbonModifiers":6400})"));
    EXPECT_EQ(stored("bare"), std::nullopt);
    Texts changes;
    const auto changed =
        registry_->shortcutByNameDidChange([&](std::string_view name) { changes.emplace_back(name); });
    registry_->setShortcut(kP, kBare);
    registry_->setShortcut({}, kBare);
    registry_->setShortcut({}, kBare);
    registry_->setShortcut({}, kHide);
    EXPECT_EQ(changes, (Texts{"bare", "bare", "hide"}));
    EXPECT_EQ(stored("bare"), std::nullopt);
    EXPECT_EQ(stored("hide"), DefaultsValue(false));
    makeRegistry();
    EXPECT_EQ(registry_->getShortcut(kHide), std::nullopt);
    EXPECT_EQ(registry_->displayText(kPeek), "⌃⌥⌘P");
    EXPECT_EQ(hotKeys_.registered.size(), 1U) << "a registry that goes gives its keys back";
}

TEST_F(RegistryTest, ReadsOnlyWhatIsAShortcutAndRegistersOnlyWhatTypesNothing) {
    struct Row {
        const char* name;
        DefaultsValue value;
        bool isShortcut;
        const char* output;
    };
    const auto json = [](const char* text) { return DefaultsValue(std::string(text)); };
    const Row rows[] = {
        {"good", json(R"({"carbonModifiers":6400,"carbonKeyCode":4,"more":1})"), true, ""},
        {"a bare function key", json(R"({"carbonKeyCode":96,"carbonModifiers":0})"), true, ""},
        {"not JSON", json("⌃⌥⌘H"), false, ""},
        {"no object", json("[4,6400]"), false, ""},
        {"half of it", json(R"({"carbonKeyCode":4})"), false, ""},
        {"fractions", json(R"({"carbonKeyCode":4.5,"carbonModifiers":6400})"), false, ""},
        {"beyond any number", json(R"({"carbonKeyCode":18446744073709551615,"carbonModifiers":0})"), false,
         ""},
        {"true", DefaultsValue(true), false, ""},
        {"no such key", json(R"({"carbonKeyCode":-1,"carbonModifiers":6400})"), true,
         "Error registering hotkey ⌃⌥⌘#-1: -50\n"},
        {"no modifiers", json(R"({"carbonKeyCode":4,"carbonModifiers":0})"), true,
         "Error registering hotkey H: -50\n"},
        {"modifiers of nothing", json(R"({"carbonKeyCode":4,"carbonModifiers":7})"), true,
         "Error registering hotkey H: -50\n"},
        {"Shift alone", json(R"({"carbonKeyCode":4,"carbonModifiers":512})"), true,
         "Error registering hotkey ⇧H: -50\n"},
        {"taken", json(R"({"carbonKeyCode":17,"carbonModifiers":6400})"), true,
         "Error registering hotkey ⌃⌥⌘T: -9878\n"},
    };
    hotKeys_.takenKeyCodes = {17};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        defaults_.set("KeyboardShortcuts_hide", row.value);
        output_.clear();
        makeRegistry();
        EXPECT_EQ(registry_->getShortcut(kHide).has_value(), row.isShortcut);
        EXPECT_EQ(output_, row.output) << "said once";
        EXPECT_EQ(registry_->refusal(kHide).has_value(), *row.output != '\0');
        EXPECT_EQ(hotKeys_.registered.size(), row.isShortcut && !*row.output ? 2U : 1U);
        EXPECT_EQ(stored("hide"), row.value);
    }
}

TEST_F(RegistryTest, AKeyReachesEveryNameThatHasIt) {
    tap(kHKeys);
    EXPECT_EQ(ran(), (Texts{"hide down", "hide up"}));
    registry_->setShortcut(kH, kBare);
    EXPECT_EQ(hotKeys_.registered.size(), 2U);
    tap(kHKeys);
    EXPECT_EQ(ran(), (Texts{"bare down", "hide down", "bare up", "hide up"}));
    registry_->setShortcut({}, kHide);
    tap(kHKeys);
    EXPECT_EQ(ran(), (Texts{"bare down", "bare up"})) << "the other still has it";
    registry_->setShortcut(kP, kBare);
    EXPECT_FALSE(hotKeys_.press(kHKeys)) << "it is anyone's again";
    tap(kPKeys);
    EXPECT_EQ(ran(), (Texts{"bare down", "peek down", "bare up", "peek up"}));
}

TEST_F(RegistryTest, AHeldKeyComesUpWhenItIsTakenAway) {
    hotKeys_.press(kPKeys);
    registry_->setShortcut(Shortcut{17, kModifiers}, kPeek);
    EXPECT_EQ(ran(), (Texts{"peek down", "peek up"}));
    hotKeys_.press({17, kFlags});
    EXPECT_EQ(ran(), Texts{"peek down"}) << "the new one works at once";
}

TEST_F(RegistryTest, ShortcutsAreShownAsTheLayoutNamesThem) {
    struct Row {
        Shortcut shortcut;
        const char* text = nullptr;
    };
    keyNames_.texts = {{4, "р"}, {24, "ß"}, {33, "é"}};
    for (const auto& row :
         {Row{{4, kModifiers | carbon::kShift}, "⌃⌥⇧⌘Р"}, Row{{24, carbon::kCommand}, "⌘ẞ"},
          Row{{33, carbon::kOption}, "⌥É"}, Row{{126, kModifiers}, "⌃⌥⌘↑"}, Row{{96, 0}, "F5"},
          Row{{49, carbon::kControl}, "⌃Space"}, Row{{300, carbon::kControl}, "⌃#300"}})
        EXPECT_EQ(displayForm(row.shortcut, keyNames_), row.text);
    EXPECT_EQ(shortcutOf({4, kFlags | platform::modifier::kCapsLock}), kH);
}

}  // namespace
}  // namespace keyboard_shortcuts
