#include "orvellos/settings/Settings.h"

#include <fmt/format.h>

#include <cmath>

#include "platform/freedesktop/files/JsonDefaultsStore.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using nlohmann::json;

constexpr const char* kFile = "/defaults.json";
const json kRightTop = {{"data", R"({"hEdge":"right","hOffset":224.0,"vEdge":"top","vOffset":56.0})"}};
const json kLeftTop = {{"data", R"({"hEdge":"left","hOffset":100.0,"vEdge":"top","vOffset":-25.0})"}};
const platform::Screen kMainScreen{platform::DisplayId{1}, {0, 0, 1440, 900}, {0, 0, 1440, 875}, 1};

json with(json stored, const char* key, const json& value) {
    stored[key] = value;
    return stored;
}

class SettingsTests : public ApplicationTest {
  protected:
    // Starts on a file with these members.
    Settings& open(const json& stored, const std::optional<platform::Screen>& screen = kMainScreen) {
        auto& files = desktop_.files;
        files.put(kFile, stored.dump());
        files.writes.clear();
        store_.emplace(files, desktop_.runLoop, kFile, [](auto message) { FAIL() << message; });
        return opened_.emplace(*store_, desktop_.loginItem, screen);
    }
    json stored() { return json::parse(desktop_.files.files[kFile]); }
    // Every field in the order of its declaration.
    [[nodiscard]] std::string fields() const {
        const auto& s = *opened_;
        return fmt::format("{} {} {} {} {} {} {} {} {} {} {}", rawValue(s.visibilityMode.get()),
                           s.showRevealOnSwipe.get(), s.killSwitchActive.get(), rawValue(s.tagSize.get()),
                           s.embiggenAllTags.get(), rawValue(s.missionControlStyle.get()),
                           s.hasSeenWelcome.get(), s.lastWelcomeVersion.get(),
                           rawValue(s.globalTagShape.get()),
                           s.globalAnchoredPosition.get().value_or(AnchoredPosition{}).hOffset,
                           s.globalAnchoredDisplay.get().value_or("anywhere"));
    }

    std::optional<platform::freedesktop::JsonDefaultsStore> store_;
    std::optional<Settings> opened_;
};

TEST_F(SettingsTests, ReadWhatIsThereAndFallBackFromTheRest) {
    const auto complete = R"({
        "visibilityMode": "hiddenDuringWork", "showRevealOnSwipe": false, "killSwitchActive": true,
        "tagSize": "missionControl", "embiggenAllTags": true, "missionControlStyle": "fullscreen",
        "hasSeenWelcome": true, "lastWelcomeVersion": 3, "globalTagShape": "pill",
        "globalAnchoredDisplay": "X"})"_json;
    const auto unusable = R"({
        "visibilityMode": true, "showRevealOnSwipe": 0, "revealOnSpaceChange": "yes",
        "killSwitchActive": "yes", "hideAllLabels": true, "tagSize": "huge", "embiggenAllTags": 1,
        "missionControlStyle": "Pill", "hasSeenWelcome": "yes", "lastWelcomeVersion": true,
        "globalTagShape": "Pill", "globalAnchoredPosition": {"data": "{\"hEdge\":\"middle\"}"},
        "globalAnchoredDisplay": 1})"_json;
    const std::pair<json, std::string> rows[] = {
        {json::object(), "alwaysVisible true false medium false headerBar false 0 tag 224 anywhere"},
        {with(complete, "globalAnchoredPosition", kLeftTop),
         "hiddenDuringWork false true missionControl true fullscreen true 3 pill 100 X"},
        {unusable, "alwaysVisible true true medium false headerBar false 0 tag 0 anywhere"}};
    for (const auto& [before, expected] : rows) {
        open(before);
        EXPECT_EQ(fields(), expected);
        EXPECT_EQ(stored(), before.empty() ? with(before, "globalAnchoredPosition", kRightTop) : before);
    }
}

TEST_F(SettingsTests, WriteEachFieldInTheFormInWhichItIsRead) {
    auto& s = open(json::object());
    s.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    s.showRevealOnSwipe.set(false);
    s.killSwitchActive.set(true);
    s.tagSize.set(TagSize::MissionControl);
    s.embiggenAllTags.set(true);
    s.missionControlStyle.set(MissionControlStyle::Fullscreen);
    s.hasSeenWelcome.set(true);
    s.lastWelcomeVersion.set(3);
    s.globalTagShape.set(TagShape::Pill);
    s.globalAnchoredPosition.set(AnchoredPosition{HEdge::Left, 100, VEdge::Top, -25});
    s.globalAnchoredDisplay.set("X");
    EXPECT_EQ(stored()["globalAnchoredPosition"], kLeftTop);
    open(stored());
    EXPECT_EQ(fields(), "hiddenDuringWork false true missionControl true fullscreen true 3 pill 100 X");

    const AnchoredPosition nowhere{HEdge::Left, std::nan(""), VEdge::Top, 0};
    for (const auto& none : {std::optional<AnchoredPosition>(), std::optional(nowhere)}) {
        opened_->globalAnchoredPosition.set(AnchoredPosition{});
        EXPECT_TRUE(stored().contains("globalAnchoredPosition"));
        opened_->globalAnchoredPosition.set(none);
        EXPECT_FALSE(stored().contains("globalAnchoredPosition"));
    }
}

TEST_F(SettingsTests, ResolveTheVisibilityFromTheModeAndTheKeysBeforeIt) {
    const std::pair<const char*, const char*> rows[] = {
        {R"({"visibilityMode": "alwaysVisible", "revealOnlyInMissionControl": true,
             "revealOnSpaceChange": false})",
         "alwaysVisible true"},
        {R"({"visibilityMode": "alwaysVisible", "showRevealOnSwipe": false})", "alwaysVisible false"},
        {R"({"visibilityMode": "hiddenDuringWork"})", "hiddenDuringWork true"},
        {R"({"visibilityMode": "hiddenDuringWork", "showRevealOnSwipe": false})", "hiddenDuringWork false"},
        {R"({"visibilityMode": "revealInMC", "showRevealOnSwipe": true})", "hiddenDuringWork false"},
        {R"({"visibilityMode": "revealOnSwipe", "showRevealOnSwipe": false})", "hiddenDuringWork true"},
        {R"({"visibilityMode": "revealInMCAndOnSwipe", "showRevealOnSwipe": false})",
         "hiddenDuringWork true"},
        {R"({"visibilityMode": "HiddenDuringWork", "showRevealOnSwipe": false})", "alwaysVisible true"},
        {R"({"showRevealOnSwipe": false})", "alwaysVisible true"},
        {R"({"revealOnSpaceChange": false})", "alwaysVisible true"},
        {R"({"revealOnSpaceChange": true})", "hiddenDuringWork true"},
        {R"({"revealOnlyInMissionControl": false})", "hiddenDuringWork true"},
        {R"({"revealOnlyInMissionControl": false, "revealOnSpaceChange": false})", "alwaysVisible true"},
        {R"({"revealOnlyInMissionControl": false, "revealOnSpaceChange": true})", "hiddenDuringWork true"},
        {R"({"revealOnlyInMissionControl": true})", "hiddenDuringWork true"},
        {R"({"revealOnlyInMissionControl": true, "revealOnSpaceChange": false,
             "showRevealOnSwipe": true})",
         "hiddenDuringWork false"},
        {R"({"revealOnlyInMissionControl": true, "revealOnSpaceChange": true})", "hiddenDuringWork true"},
    };
    for (const auto& [text, expected] : rows) {
        const auto before = with(json::parse(text), "globalAnchoredPosition", kRightTop);
        open(before);
        EXPECT_TRUE(fields().starts_with(std::string(expected) + " ")) << text << fields();
        EXPECT_EQ(stored(), before);
    }
}

TEST_F(SettingsTests, MigrateTheKeysOfEarlierVersionsOnce) {
    const json placed = {{"globalAnchoredPosition", kRightTop}};
    const json center = {{"x", 100}, {"y", 900}};
    const auto style = [&](const char* name) { return with(placed, "missionControlStyle", name); };
    struct Row {
        const char* name;
        json before;
        std::optional<platform::Screen> screen;
        json after;
    };
    const Row rows[] = {
        {"full screen", with(placed, "missionControlFullscreen", true), {}, style("fullscreen")},
        {"not full screen", with(placed, "missionControlFullscreen", false), {}, style("pill")},
        {"no boolean", with(placed, "missionControlFullscreen", 1), {}, placed},
        {"styled", with(style("headerBar"), "missionControlFullscreen", true), {}, style("headerBar")},
        {"centre", {{"globalTagCenter", center}}, kMainScreen, {{"globalAnchoredPosition", kLeftTop}}},
        {"no screen", {{"globalTagCenter", center}}, {}, with(placed, "globalTagCenter", center)},
        {"placed", with(placed, "globalTagCenter", center), kMainScreen,
         with(placed, "globalTagCenter", center)},
        {"half", with({}, "globalTagCenter", {{"x", 1}}), kMainScreen,
         with(placed, "globalTagCenter", {{"x", 1}})},
        {"a position that is no data", {{"globalAnchoredPosition", "right"}}, kMainScreen, placed},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto migratedStyle = open(row.before, row.screen).missionControlStyle.get();
        EXPECT_EQ(stored(), row.after);
        EXPECT_EQ(rawValue(migratedStyle), row.after.value("missionControlStyle", "headerBar"));
        open(row.after, row.screen);
        EXPECT_TRUE(desktop_.files.writes.empty());
    }
}

TEST_F(SettingsTests, TellTheFieldThenTheObjectThenWriteEveryAssignment) {
    Texts events;
    const auto note = [&](const char* what) {
        events.push_back(fmt::format("{} {} {}", what, rawValue(settings_.tagSize.get()),
                                     desktop_.defaults.writes.size()));
    };
    desktop_.defaults.writes.clear();
    const auto field = settings_.tagSize.subscribe([&](TagSize) { note("field"); });
    const auto object = settings_.subscribe([&] { note("object"); });
    settings_.tagSize.set(TagSize::Large);
    settings_.tagSize.set(TagSize::Large);
    EXPECT_EQ(events, (Texts{"field medium 0", "field large 0", "object large 0", "field large 1",
                             "object large 1"}));
    EXPECT_EQ(desktop_.defaults.writes, (Texts{"tagSize", "tagSize"}));
}

TEST_F(SettingsTests, DeliverAndWriteLastWhatASubscriberAssignsInTurn) {
    auto& killSwitch = settings_.killSwitchActive;
    const auto veto = killSwitch.subscribe([&](bool active) {
        if (active) killSwitch.set(false);
    });
    std::vector<bool> told;
    const auto later = killSwitch.subscribe([&](bool active) { told.push_back(active); });
    killSwitch.set(true);
    EXPECT_FALSE(killSwitch.get());
    EXPECT_EQ(told, (std::vector{false, false})) << "never the value that was replaced already";
    EXPECT_EQ(desktop_.defaults.value("killSwitchActive"), platform::DefaultsValue(false));
}

TEST_F(SettingsTests, SwitchTheLoginItemWhenItIsNotSoAlready) {
    int announced = 0;
    const auto object = settings_.subscribe([&] { ++announced; });
    for (const bool enabled : {false, true, true}) settings_.setLaunchAtLogin(enabled);
    EXPECT_EQ(desktop_.loginItem.switches, 1);
    EXPECT_TRUE(settings_.launchAtLogin());
    EXPECT_TRUE(desktop_.systemLog.general().empty());

    desktop_.loginItem.failure = platform::Error{"No space left on device"};
    settings_.setLaunchAtLogin(false);
    EXPECT_TRUE(settings_.launchAtLogin());
    EXPECT_EQ(announced, 4);
    EXPECT_EQ(desktop_.systemLog.general(),
              Texts{"orvello: launch-at-login toggle failed: No space left on device"});
}

}  // namespace
}  // namespace orvellos
