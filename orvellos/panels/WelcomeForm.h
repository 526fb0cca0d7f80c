#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "orvellos/permissions/PermissionRow.h"
#include "orvellos/settings/Settings.h"

namespace orvellos {

// The version of the welcome that a user who has finished it has seen.
inline constexpr std::int64_t kCurrentWelcomeVersion = 2;

// The texts and the operations of the welcome window: a page on the application's use, then one on the
// optional permissions. Main thread only.
class WelcomeForm {
  public:
    enum class Step { Features, Permissions };
    enum class Mode { FirstRun, WhatsNew };

    struct Feature {
        std::string_view symbol;
        std::string_view title;
        std::string_view text;
    };
    static constexpr std::array<Feature, 5> kFeatures = {
        {{"tag.fill", "Tag a Space",
          "Click the tag icon in your menu bar → “Tag this Space…”. Give it a name and a color."},
         {"rectangle.on.rectangle", "The label follows the Space",
          "Switch Spaces — the right label appears, pinned to that one. All your Spaces can have their own."},
         {"cursorarrow.click.2", "Click to jump",
          "Open Mission Control and click any tag to jump to that Space."},
         {"hand.draw", "Move tags between Spaces",
          "In Mission Control, drag a tag from one Space thumbnail to another — it re-pins to the new "
          "Space."},
         {"eye.slash", "Hide tags when you need to",
          "⌃⌥⌘H hides everything for screen-sharing. Prefer them always tucked away? Settings → “Hidden "
          "during work”, then peek with ⌃⌥⌘P."}}};
    static constexpr std::string_view kSkip = "Skip";
    static constexpr std::string_view kContinue = "Continue";
    static constexpr std::string_view kPermissionsSymbol = "lock.shield";
    static constexpr std::string_view kPermissionsHeading = "Two quick permissions";
    static constexpr std::string_view kPermissionsText =
        "Optional, but they make labels appear instantly when you press F3 or swipe Spaces.";
    static constexpr std::string_view kPermissionsFootnote =
        "You can always grant these later from Settings → Permissions.";
    static constexpr std::string_view kBack = "Back";
    static constexpr std::string_view kDone = "Done";
    static constexpr std::string_view kTagFirstSpace = "Tag my first Space";

    // Whoever shows the form.
    class Owner {
      public:
        virtual ~Owner() = default;
        // Closes the window, and may end the form.
        virtual void closeWelcome() = 0;
        // Called after that.
        virtual void tagFirstSpace() = 0;
    };
    struct Services {
        Settings& settings;
        PermissionsState::Services permissions;
        Owner& owner;
    };
    WelcomeForm(Mode mode, Services services);
    WelcomeForm(const WelcomeForm&) = delete;
    WelcomeForm& operator=(const WelcomeForm&) = delete;

    [[nodiscard]] std::string_view title() const;
    [[nodiscard]] std::string_view subtitle() const;
    [[nodiscard]] Step step() const { return step_; }
    [[nodiscard]] const std::vector<PermissionRow>& permissionRows() const { return permissionRows_; }

    // The operations of the buttons. Finishing in any way records that the welcome was seen.
    void continueToPermissions();
    void back();
    void finish();
    void tagMyFirstSpace();

    // Called when the rows of the permissions may have to show something else.
    platform::Subscription subscribe(std::function<void()> callback) {
        return permissionsState_.subscribe(std::move(callback));
    }

  private:
    const Mode mode_;
    Services services_;
    Step step_ = Step::Features;
    PermissionsState permissionsState_;
    std::vector<PermissionRow> permissionRows_;
};

}  // namespace orvellos
