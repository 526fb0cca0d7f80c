#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "orvellos/base/Describe.h"
#include "orvellos/base/Published.h"
#include "orvellos/settings/AnchoredPosition.h"
#include "orvellos/settings/Setting.h"
#include "orvellos/tags/TagStyle.h"
#include "platform/Files.h"
#include "platform/Screens.h"
#include "platform/Session.h"

namespace orvellos {

// Whether tags stay visible or hide while the user works.
enum class TagVisibilityMode { AlwaysVisible, HiddenDuringWork };

template <>
struct RawValues<TagVisibilityMode> {
    static constexpr std::array<std::pair<TagVisibilityMode, std::string_view>, 2> cases = {
        {{TagVisibilityMode::AlwaysVisible, "alwaysVisible"},
         {TagVisibilityMode::HiddenDuringWork, "hiddenDuringWork"}}};
};

// The name shown to the user.
[[nodiscard]] constexpr std::string_view title(TagVisibilityMode mode) {
    return mode == TagVisibilityMode::HiddenDuringWork ? "Hidden during normal work" : "Always visible";
}

// The user's global choices, kept in the defaults store and written field by field on assignment. What cannot
// be used of a stored value falls back to a default, and keys of earlier versions are converted; neither
// fails. Main thread only.
class Settings {
  private:
    const platform::DefaultsStore& defaults_;  // migrated before any field reads it
    Observers<> objectChanged_;

  public:
    // Migrates old keys in the store, then reads it. `mainScreen` is needed by one migration.
    Settings(platform::DefaultsStore& defaults, platform::LoginItem& loginItem,
             const std::optional<platform::Screen>& mainScreen);

    [[nodiscard]] const platform::DefaultsStore& defaults() const { return defaults_; }
    Setting<TagVisibilityMode> visibilityMode;
    Setting<bool> showRevealOnSwipe;  // a brief reveal when the Space changes
    Setting<bool> killSwitchActive;   // hides every tag, for screen sharing
    Setting<TagSize> tagSize;
    Setting<bool> embiggenAllTags;  // the big size at all times
    Setting<MissionControlStyle> missionControlStyle;
    Setting<bool> hasSeenWelcome;
    Setting<std::int64_t> lastWelcomeVersion;
    Setting<TagShape> globalTagShape;
    Setting<std::optional<AnchoredPosition>> globalAnchoredPosition;
    Setting<std::optional<std::string>> globalAnchoredDisplay;  // its uuid, where displays share their Spaces

    // Called with every assignment of a field and after every setLaunchAtLogin.
    platform::Subscription subscribe(std::function<void()> callback) {
        return objectChanged_.subscribe(std::move(callback));
    }

    // The state of the login item itself; it is not stored here.
    [[nodiscard]] bool launchAtLogin() const { return loginItem_.isEnabled(); }
    // Switches the login item if it is not so already. A failure is logged and leaves it as it was.
    void setLaunchAtLogin(bool enabled);

  private:
    platform::LoginItem& loginItem_;
};

}  // namespace orvellos
