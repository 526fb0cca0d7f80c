#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/Tag.h"
#include "platform/Keys.h"
#include "platform/Panels.h"
#include "platform/Processes.h"
#include "platform/RunLoop.h"
#include "platform/Session.h"
#include "platform/System.h"

namespace orvellos {

// What the user can do when Spaces cannot be switched.
enum class NavRemedy { Accessibility, KeyboardShortcuts };

[[nodiscard]] constexpr std::string_view buttonTitle(NavRemedy remedy) {
    return remedy == NavRemedy::Accessibility ? "Open Accessibility Settings" : "Open Keyboard Shortcuts";
}

// The page of the system's settings where they do it.
[[nodiscard]] constexpr std::string_view settingsUrl(NavRemedy remedy) {
    return remedy == NavRemedy::Accessibility
               ? "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"
               : "x-apple.systempreferences:com.apple.Keyboard-Settings.extension";
}

// What navigation needs of the system.
struct NavServices {
    platform::BackgroundProcesses& processes;
    platform::SpaceShortcuts& shortcuts;
    const platform::Permissions& permissions;
    platform::Alerts& alerts;
    platform::UrlOpener& urls;
};

// The tags, as a navigation controller needs them.
class NavigatedTags {
  public:
    virtual ~NavigatedTags() = default;

    [[nodiscard]] virtual const std::vector<Tag>& tagsProvider() const = 0;
    // Pins the tag windows to their Spaces.
    virtual void relocate() = 0;
    // Shows hidden tags for a glance.
    virtual void beginTransientReveal() = 0;
};

// Takes the user to a Space. There are several ways, each with its own reasons to fail without a word, so
// they are tried in turn and what counts is whether the Space is the current one afterwards. When none has
// got there an alert says why, and offers the page of the system's settings that may help. Main thread only.
class NavController {
  public:
    NavController(const SpaceIdentifier& spaces, platform::RunLoop& runLoop, const Settings& settings,
                  NavServices services, NavigatedTags& tags)
        : spaces_(spaces), runLoop_(runLoop), settings_(settings), services_(services), tags_(tags) {}

    // To the tag's Space. False when there is no such tag, and when it has no Space that can be reached from
    // here, which an alert says.
    bool navigateToTagID(const TagID& id);
    // To a Space that need not be tagged. Always true.
    bool navigateToSpace(const std::string& uuid);

    // Ends the navigations that have arrived, so that none takes the user back who goes on at once. To be
    // called when the current Space has changed.
    void activeSpaceChanged();
    // Ends every navigation on its way, without a word.
    void cancel();

    // What stands in the way; absent when nothing does.
    [[nodiscard]] std::optional<NavRemedy> neededRemedy() const;
    void openSettings(NavRemedy remedy) { services_.urls.openUrl(settingsUrl(remedy)); }

    // True whenever the system does not say.
    [[nodiscard]] bool isSymbolicHotKeyEnabled(int number) const;
    // Whether the system takes both shortcuts for moving a Space.
    [[nodiscard]] bool areShortcutsEnabled() const;

    // The ways. Each is true when it has begun, or there is nothing to do; arriving is another matter.
    bool navigateViaOSAScript(const std::string& uuid);
    bool navigateViaKeyboard(const std::string& uuid);

  private:
    // From one Space to another, in their order on the pointer's display.
    struct Distance {
        std::size_t from = 0;
        std::size_t to = 0;
        [[nodiscard]] int delta() const { return static_cast<int>(to) - static_cast<int>(from); }
        [[nodiscard]] int steps() const { return delta() < 0 ? -delta() : delta(); }
    };
    struct Attempt {
        std::string label;
        std::function<void()> run;
        platform::Duration wait;  // until the Space should have changed
    };
    // A navigation on its way.
    struct Navigation {
        std::string uuid;
        std::string displayName;
        int steps = 1;
        std::string_view direction;
        bool shortcutsOK = false;
        bool accessibilityOK = false;
        std::vector<Attempt> attempts = {};
        std::optional<std::size_t> tried = {};  // the last of them that was begun
        std::optional<bool> cgsSucceeded = {};  // absent while that way has not been tried
        std::optional<std::int64_t> keys = {};  // the generation of its sequence of keys
        platform::Timer timer = {};
    };
    using NavigationId = std::uint64_t;

    [[nodiscard]] bool hasReached(const std::string& uuid) const;
    [[nodiscard]] std::optional<std::size_t> indexOf(const std::string& uuid) const;
    [[nodiscard]] std::optional<Distance> distanceTo(const std::string& uuid) const;
    void start(const std::string& uuid, std::optional<std::size_t> target, std::string displayName);
    [[nodiscard]] std::vector<Attempt> attemptsOf(NavigationId id);
    void tryNext(NavigationId id, std::size_t next);
    [[nodiscard]] bool endIfReached(NavigationId id);
    void checkArrival(NavigationId id);
    void fail(NavigationId id);
    void postSpaceKey(std::uint16_t keyCode, int remaining, std::string_view arrow, std::int64_t generation);
    void warn(std::string message, std::string informativeText);

    const SpaceIdentifier& spaces_;
    platform::RunLoop& runLoop_;
    const Settings& settings_;
    NavServices services_;
    NavigatedTags& tags_;
    std::map<NavigationId, Navigation> navigations_;
    NavigationId lastNavigation_ = 0;
    std::int64_t generation_ = 0;  // of the newest sequence of keys; an older one stops
    std::map<std::int64_t, platform::Timer> keySequences_;  // what each still has to press, by generation
};

}  // namespace orvellos
