#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/panels/PanelController.h"
#include "orvellos/windows/TagManager.h"
#include "platform/Menus.h"

namespace orvellos {

// What the menu has the application do, beside what it does to tags and panels.
class ApplicationCommands {
  public:
    virtual ~ApplicationCommands() = default;
    virtual void saveDiagnostics() = 0;
    virtual void checkForUpdates() = 0;
    virtual void terminate() = 0;
};

// The application in the desktop's bar: the current tag's label while tags are hidden, and the menu, which is
// made anew each time it opens.
class StatusItemController {
  public:
    static constexpr std::string_view kAccessibilityDescription = "orvellos";
    static constexpr std::string_view kHiddenDescription = "Tags hidden for screen-share";

    struct Services {
        TagManager& manager;
        const SpaceIdentifier& spaces;
        Settings& settings;
        PanelController& panels;
        platform::RunLoop& runLoop;
        platform::StatusItem& statusItem;
        const keyboard_shortcuts::Registry& hotkeys;
        ApplicationCommands& commands;
    };
    explicit StatusItemController(const Services& services);

    [[nodiscard]] std::vector<platform::MenuItem> buildMenu() const;
    [[nodiscard]] platform::StatusTitle title() const;

  private:
    using Menu = std::vector<platform::MenuItem>;

    void addHiddenState(Menu& menu) const;
    void addWarnings(Menu& menu) const;
    void addCurrentSpace(Menu& menu) const;
    void addSpaces(Menu& menu) const;
    void addCommands(Menu& menu) const;
    void addApplication(Menu& menu) const;
    [[nodiscard]] platform::MenuItem tagRow(const Tag& tag, std::string title, bool checked) const;
    [[nodiscard]] platform::MenuItem reassignRow(const Tag& tag) const;
    [[nodiscard]] platform::MenuItem untaggedRow(const MenuSpaceRow& row) const;
    [[nodiscard]] std::string jumpToolTip(std::string_view text) const;
    [[nodiscard]] std::string suffix(const keyboard_shortcuts::Name& name) const;
    [[nodiscard]] const Tag* find(const std::optional<TagID>& id) const;
    [[nodiscard]] bool canJump() const { return !services_.manager.neededRemedy(); }
    void refreshLater();

    Services services_;
    platform::Timer refresh_;
    std::vector<platform::Subscription> cancellables_;
};

}  // namespace orvellos
