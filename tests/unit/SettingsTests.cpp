#include "orvellos/Settings.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orvellos/DebugLog.h"
#include "platform/simulated/SimulatedDefaultsStore.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedSystemLog.h"

namespace orvellos {
namespace {

using platform::DefaultsData;
using platform::DefaultsDictionary;
using platform::simulated::SimulatedDefaultsStore;
using Values = SimulatedDefaultsStore::Values;

const std::string kDefaultPosition = R"({"hEdge":"right","hOffset":224.0,"vEdge":"top","vOffset":56.0})";
const Values kPositioned = {{"globalAnchoredPosition", DefaultsData{kDefaultPosition}}};

platform::Screen mainScreen() {
    return {platform::DisplayId{1}, {0, 0, 1440, 900}, {0, 0, 1440, 875}, 1};
}

// The settings on a store that holds these values besides a position.
struct Fixture {
    explicit Fixture(Values values = {}, std::optional<platform::Screen> screen = mainScreen())
        : defaults(std::move(values)), settings(defaults, loginItem, screen) {}

    SimulatedDefaultsStore defaults;
    platform::simulated::SimulatedLoginItem loginItem;
    Settings settings;
};

Values with(const Values& values) {
    Values all = kPositioned;
    all.insert(values.begin(), values.end());
    return all;
}

TEST(SettingsTests, StartWithTheDefaultsAndWriteThePositionAlone) {
    const Fixture f;
    const auto& s = f.settings;
    EXPECT_EQ(s.visibilityMode.get(), TagVisibilityMode::AlwaysVisible);
    EXPECT_TRUE(s.showRevealOnSwipe.get());
    EXPECT_FALSE(s.killSwitchActive.get() || s.embiggenAllTags.get() || s.hasSeenWelcome.get());
    EXPECT_EQ(s.tagSize.get(), TagSize::Medium);
    EXPECT_EQ(s.missionControlStyle.get(), MissionControlStyle::HeaderBar);
    EXPECT_EQ(s.lastWelcomeVersion.get(), 0);
    EXPECT_EQ(s.globalTagShape.get(), TagShape::Tag);
    EXPECT_EQ(s.globalAnchoredPosition.get(), (AnchoredPosition{HEdge::Right, 224, VEdge::Top, 56}));
    EXPECT_EQ(f.defaults.values, kPositioned);
}

TEST(SettingsTests, ResolveTheVisibilityFromTheModeAndTheKeysBeforeIt) {
    constexpr auto kHidden = TagVisibilityMode::HiddenDuringWork;
    constexpr auto kVisible = TagVisibilityMode::AlwaysVisible;
    struct Row {
        std::optional<std::string> mode;
        std::optional<bool> onSwipe, inMissionControl, onSpaceChange;
        TagVisibilityMode expectedMode = kVisible;
        bool expectedOnSwipe = true;
    };
    constexpr auto kAbsent = std::nullopt;
    const Row rows[] = {
        {"alwaysVisible", kAbsent, true, false, kVisible, true},
        {"alwaysVisible", false, kAbsent, kAbsent, kVisible, false},
        {"hiddenDuringWork", kAbsent, kAbsent, kAbsent, kHidden, true},
        {"hiddenDuringWork", false, kAbsent, true, kHidden, false},
        {"revealInMC", true, kAbsent, true, kHidden, false},
        {"revealOnSwipe", false, true, false, kHidden, true},
        {"revealInMCAndOnSwipe", false, true, false, kHidden, true},
        {"HiddenDuringWork", false, kAbsent, kAbsent, kVisible, true},
        {kAbsent, false, kAbsent, kAbsent, kVisible, true},
        {kAbsent, kAbsent, kAbsent, false, kVisible, true},
        {kAbsent, kAbsent, kAbsent, true, kHidden, true},
        {kAbsent, kAbsent, false, kAbsent, kHidden, true},
        {kAbsent, kAbsent, false, false, kVisible, true},
        {kAbsent, kAbsent, false, true, kHidden, true},
        {kAbsent, kAbsent, true, kAbsent, kHidden, true},
        {kAbsent, true, true, false, kHidden, false},
        {kAbsent, kAbsent, true, true, kHidden, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Values values = kPositioned;
        if (row.mode) values.emplace("visibilityMode", *row.mode);
        if (row.onSwipe) values.emplace("showRevealOnSwipe", *row.onSwipe);
        if (row.inMissionControl) values.emplace("revealOnlyInMissionControl", *row.inMissionControl);
        if (row.onSpaceChange) values.emplace("revealOnSpaceChange", *row.onSpaceChange);
        const Fixture f(values);
        EXPECT_EQ(f.settings.visibilityMode.get(), row.expectedMode);
        EXPECT_EQ(f.settings.showRevealOnSwipe.get(), row.expectedOnSwipe);
        EXPECT_EQ(f.defaults.values, values);
    }
}

TEST(SettingsTests, FallBackFromValuesOfAnotherKind) {
    const std::string text = "yes";
    const Fixture f({{"visibilityMode", true},
                     {"showRevealOnSwipe", std::int64_t{0}},
                     {"revealOnSpaceChange", text},
                     {"killSwitchActive", text},
                     {"hideAllLabels", true},
                     {"tagSize", std::string("huge")},
                     {"embiggenAllTags", std::int64_t{1}},
                     {"missionControlStyle", std::string("Pill")},
                     {"hasSeenWelcome", text},
                     {"lastWelcomeVersion", true},
                     {"globalTagShape", std::string("Pill")},
                     {"globalAnchoredPosition", DefaultsData{R"({"hEdge":"middle"})"}}});
    const auto& s = f.settings;
    EXPECT_EQ(s.visibilityMode.get(), TagVisibilityMode::AlwaysVisible);
    EXPECT_TRUE(s.showRevealOnSwipe.get() && s.killSwitchActive.get());
    EXPECT_FALSE(s.embiggenAllTags.get() || s.hasSeenWelcome.get());
    EXPECT_EQ(s.tagSize.get(), TagSize::Medium);
    EXPECT_EQ(s.missionControlStyle.get(), MissionControlStyle::HeaderBar);
    EXPECT_EQ(s.lastWelcomeVersion.get(), 0);
    EXPECT_EQ(s.globalTagShape.get(), TagShape::Tag);
    EXPECT_EQ(s.globalAnchoredPosition.get(), std::nullopt);
    EXPECT_TRUE(f.defaults.writes.empty());
}

TEST(SettingsTests, MigrateTheKeysOfEarlierVersionsOnce) {
    const DefaultsDictionary center = {{"x", 100}, {"y", 900}};
    const DefaultsData migrated{R"({"hEdge":"left","hOffset":100.0,"vEdge":"top","vOffset":-25.0})"};
    struct Row {
        const char* name;
        Values before;
        std::optional<platform::Screen> screen;
        Values after;
    };
    const Row rows[] = {
        {"full screen", with({{"missionControlFullscreen", true}}), mainScreen(),
         with({{"missionControlStyle", std::string("fullscreen")}})},
        {"not full screen", with({{"missionControlFullscreen", false}}), mainScreen(),
         with({{"missionControlStyle", std::string("pill")}})},
        {"no boolean", with({{"missionControlFullscreen", std::int64_t{1}}}), mainScreen(), kPositioned},
        {"a style already",
         with({{"missionControlFullscreen", true}, {"missionControlStyle", std::string("headerBar")}}),
         mainScreen(), with({{"missionControlStyle", std::string("headerBar")}})},
        {"centre", {{"globalTagCenter", center}}, mainScreen(), {{"globalAnchoredPosition", migrated}}},
        {"centre without a screen",
         {{"globalTagCenter", center}},
         std::nullopt,
         with({{"globalTagCenter", center}})},
        {"centre and a position", with({{"globalTagCenter", center}}), mainScreen(),
         with({{"globalTagCenter", center}})},
        {"half a centre",
         {{"globalTagCenter", DefaultsDictionary{{"x", 1}}}},
         mainScreen(),
         with({{"globalTagCenter", DefaultsDictionary{{"x", 1}}}})},
        {"a position that is no data",
         {{"globalAnchoredPosition", std::string("right")}},
         mainScreen(),
         kPositioned},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Fixture first(row.before, row.screen);
        EXPECT_EQ(first.defaults.values, row.after);
        const Fixture second(row.after, row.screen);
        EXPECT_TRUE(second.defaults.writes.empty());
    }
    EXPECT_EQ(Fixture(with({{"missionControlFullscreen", true}})).settings.missionControlStyle.get(),
              MissionControlStyle::Fullscreen);
}

TEST(SettingsTests, TellTheFieldThenTheObjectThenWriteEveryAssignment) {
    Fixture f(kPositioned);
    std::vector<std::string> events;
    const auto note = [&](const std::string& what) {
        events.push_back(what + " after " + std::to_string(f.defaults.writes.size()) + " writes");
    };
    const auto field =
        f.settings.tagSize.subscribe([&](TagSize size) { note("field " + std::string(rawValue(size))); });
    const auto object =
        f.settings.subscribe([&] { note("object " + std::string(rawValue(f.settings.tagSize.get()))); });
    f.settings.tagSize.set(TagSize::Large);
    f.settings.tagSize.set(TagSize::Large);
    EXPECT_EQ(events, (std::vector<std::string>{"field medium after 0 writes", "field large after 0 writes",
                                                "object large after 0 writes", "field large after 1 writes",
                                                "object large after 1 writes"}));
    EXPECT_EQ(f.defaults.writes, (std::vector<std::string>{"tagSize", "tagSize"}));
}

TEST(SettingsTests, WriteWhatASubscriberAssignsInTurn) {
    Fixture f(kPositioned);
    const auto veto = f.settings.killSwitchActive.subscribe([&](bool active) {
        if (active) f.settings.killSwitchActive.set(false);
    });
    std::vector<bool> told;
    const auto later = f.settings.killSwitchActive.subscribe([&](bool active) { told.push_back(active); });
    f.settings.killSwitchActive.set(true);
    EXPECT_EQ(told, (std::vector{false, false})) << "never the value that was replaced already";
    EXPECT_FALSE(f.settings.killSwitchActive.get());
    EXPECT_EQ(f.defaults.value("killSwitchActive"), platform::DefaultsValue(false));
}

TEST(SettingsTests, WriteEachFieldUnderItsKeyInItsForm) {
    Fixture f;
    auto& s = f.settings;
    s.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    s.showRevealOnSwipe.set(false);
    s.killSwitchActive.set(true);
    s.tagSize.set(TagSize::MissionControl);
    s.embiggenAllTags.set(true);
    s.missionControlStyle.set(MissionControlStyle::Fullscreen);
    s.hasSeenWelcome.set(true);
    s.lastWelcomeVersion.set(3);
    s.globalTagShape.set(TagShape::Pill);
    s.globalAnchoredPosition.set(AnchoredPosition{HEdge::Left, 1, VEdge::Bottom, 2.5});
    const Values expected = {
        {"visibilityMode", std::string("hiddenDuringWork")},
        {"showRevealOnSwipe", false},
        {"killSwitchActive", true},
        {"tagSize", std::string("missionControl")},
        {"embiggenAllTags", true},
        {"missionControlStyle", std::string("fullscreen")},
        {"hasSeenWelcome", true},
        {"lastWelcomeVersion", std::int64_t{3}},
        {"globalTagShape", std::string("pill")},
        {"globalAnchoredPosition",
         DefaultsData{R"({"hEdge":"left","hOffset":1.0,"vEdge":"bottom","vOffset":2.5})"}}};
    EXPECT_EQ(f.defaults.values, expected);
    const Fixture again(expected);
    EXPECT_EQ(again.settings.globalAnchoredPosition.get(), s.globalAnchoredPosition.get());
    EXPECT_EQ(again.settings.lastWelcomeVersion.get(), 3);
    EXPECT_TRUE(again.settings.killSwitchActive.get() && !again.settings.showRevealOnSwipe.get());

    s.globalAnchoredPosition.set(std::nullopt);
    EXPECT_FALSE(f.defaults.values.contains("globalAnchoredPosition"));
    s.globalAnchoredPosition.set(AnchoredPosition{});
    EXPECT_TRUE(f.defaults.values.contains("globalAnchoredPosition"));
    s.globalAnchoredPosition.set(AnchoredPosition{HEdge::Left, std::nan("")});
    EXPECT_FALSE(f.defaults.values.contains("globalAnchoredPosition"));
}

TEST(SettingsTests, SwitchTheLoginItemWhenItIsNotSoAlready) {
    platform::simulated::SimulatedSystemLog systemLog;
    connectDebugLog({.systemLog = &systemLog});
    Fixture f(kPositioned);
    int announced = 0;
    const auto object = f.settings.subscribe([&] { ++announced; });
    f.settings.setLaunchAtLogin(false);
    f.settings.setLaunchAtLogin(true);
    f.settings.setLaunchAtLogin(true);
    EXPECT_EQ(f.loginItem.switches, 1);
    EXPECT_TRUE(f.settings.launchAtLogin());
    EXPECT_TRUE(systemLog.general().empty());

    f.loginItem.failure = platform::Error{"No space left on device"};
    f.settings.setLaunchAtLogin(false);
    EXPECT_TRUE(f.settings.launchAtLogin());
    EXPECT_EQ(announced, 4);
    EXPECT_EQ(systemLog.general(),
              std::vector<std::string>{"orvello: launch-at-login toggle failed: No space left on device"});
    EXPECT_TRUE(f.defaults.writes.empty());
    connectDebugLog({});
}

}  // namespace
}  // namespace orvellos
