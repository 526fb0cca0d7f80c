#include "orvellos/settings/Settings.h"

#include <fmt/format.h>
#include <string>
#include <variant>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

constexpr AnchoredPosition kDefaultPosition{HEdge::Right, 224, VEdge::Top, 56};

bool holdsPosition(const platform::DefaultsStore& defaults) {
    const auto stored = defaults.value("globalAnchoredPosition");
    return stored && std::holds_alternative<platform::DefaultsData>(*stored);
}

std::optional<platform::Point> storedTagCenter(const platform::DefaultsStore& defaults) {
    const auto stored = defaults.value("globalTagCenter");
    const auto* center = stored ? std::get_if<platform::DefaultsDictionary>(&*stored) : nullptr;
    if (!center || !center->contains("x") || !center->contains("y")) return std::nullopt;
    return platform::Point{center->at("x"), center->at("y")};
}

// Earlier versions kept the centre of the tags in screen coordinates.
void migrateTagCenter(platform::DefaultsStore& defaults, const std::optional<platform::Screen>& mainScreen) {
    const auto center = storedTagCenter(defaults);
    if (!center || holdsPosition(defaults) || !mainScreen) return;
    const auto position = anchoredPositionFromPoint(*center, mainScreen->visibleFrame);
    if (auto encoded = DefaultsCoding<AnchoredPosition>::encode(position))
        defaults.set("globalAnchoredPosition", std::move(*encoded));
    defaults.remove("globalTagCenter");
}

// Earlier versions knew two styles.
void migrateMissionControlStyle(platform::DefaultsStore& defaults) {
    const auto fullscreen = storedValue<bool>(defaults, "missionControlFullscreen");
    if (fullscreen && !storedValue<std::string>(defaults, "missionControlStyle"))
        storeValue(defaults, "missionControlStyle",
                   *fullscreen ? MissionControlStyle::Fullscreen : MissionControlStyle::Pill);
    defaults.remove("missionControlFullscreen");
}

platform::DefaultsStore& migrateLegacyKeys(platform::DefaultsStore& defaults,
                                           const std::optional<platform::Screen>& mainScreen) {
    migrateTagCenter(defaults, mainScreen);
    migrateMissionControlStyle(defaults);
    if (!holdsPosition(defaults)) storeValue(defaults, "globalAnchoredPosition", kDefaultPosition);
    return defaults;
}

template <typename T>
T stored(const platform::DefaultsStore& defaults, std::string_view key, T fallback) {
    return storedValue<T>(defaults, key).value_or(fallback);
}

struct Visibility {
    TagVisibilityMode mode;
    bool revealOnSwipe;
};

// Before there was a mode, two switches hid the tags until Mission Control or a Space change.
Visibility visibilityOfLegacyKeys(const platform::DefaultsStore& defaults) {
    const auto inMissionControl = storedValue<bool>(defaults, "revealOnlyInMissionControl");
    const auto onSpaceChange = storedValue<bool>(defaults, "revealOnSpaceChange");
    const bool hidden =
        inMissionControl.value_or(false) || onSpaceChange.value_or(inMissionControl.has_value());
    return {hidden ? TagVisibilityMode::HiddenDuringWork : TagVisibilityMode::AlwaysVisible,
            onSpaceChange.value_or(true) || !inMissionControl.value_or(false)};
}

Visibility storedVisibility(const platform::DefaultsStore& defaults) {
    const auto raw = stored(defaults, "visibilityMode", std::string());
    if (const auto mode = fromRawValue<TagVisibilityMode>(raw))
        return {*mode, stored(defaults, "showRevealOnSwipe", true)};
    if (raw == "revealInMC") return {TagVisibilityMode::HiddenDuringWork, false};
    if (raw == "revealOnSwipe" || raw == "revealInMCAndOnSwipe")
        return {TagVisibilityMode::HiddenDuringWork, true};
    return visibilityOfLegacyKeys(defaults);
}

}  // namespace

Settings::Settings(platform::DefaultsStore& store, platform::LoginItem& loginItem,
                   const std::optional<platform::Screen>& mainScreen)
    : defaults_(migrateLegacyKeys(store, mainScreen)),
      visibilityMode(store, objectChanged_, "visibilityMode", storedVisibility(store).mode),
      showRevealOnSwipe(store, objectChanged_, "showRevealOnSwipe", storedVisibility(store).revealOnSwipe),
      killSwitchActive(store, objectChanged_, "killSwitchActive",
                       stored(store, "killSwitchActive", stored(store, "hideAllLabels", false))),
      tagSize(store, objectChanged_, "tagSize", stored(store, "tagSize", TagSize::Medium)),
      embiggenAllTags(store, objectChanged_, "embiggenAllTags", stored(store, "embiggenAllTags", false)),
      missionControlStyle(store, objectChanged_, "missionControlStyle",
                          stored(store, "missionControlStyle", MissionControlStyle::HeaderBar)),
      hasSeenWelcome(store, objectChanged_, "hasSeenWelcome", stored(store, "hasSeenWelcome", false)),
      lastWelcomeVersion(store, objectChanged_, "lastWelcomeVersion",
                         stored(store, "lastWelcomeVersion", std::int64_t{0})),
      globalTagShape(store, objectChanged_, "globalTagShape", stored(store, "globalTagShape", TagShape::Tag)),
      globalAnchoredPosition(store, objectChanged_, "globalAnchoredPosition",
                             storedValue<AnchoredPosition>(store, "globalAnchoredPosition")),
      globalAnchoredDisplay(store, objectChanged_, "globalAnchoredDisplay",
                            storedValue<std::string>(store, "globalAnchoredDisplay")),
      loginItem_(loginItem) {}

void Settings::setLaunchAtLogin(bool enabled) {
    if (loginItem_.isEnabled() != enabled) {
        const auto error = enabled ? loginItem_.enable() : loginItem_.disable();
        if (error) logGeneral(fmt::format("orvello: launch-at-login toggle failed: {}", error->description));
    }
    objectChanged_.notify();
}

}  // namespace orvellos
