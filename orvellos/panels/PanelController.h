#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "orvellos/base/DeferredDeletion.h"
#include "orvellos/panels/AutoDismiss.h"
#include "orvellos/panels/PanelHost.h"
#include "orvellos/windows/TagManager.h"

namespace orvellos {

enum class PanelKind { CreateTag, EditTags, Settings, About, Welcome, QuickSwitcher };

// The panels in which the user edits everything. A panel is made when it is first asked for, comes to the
// front when it is asked for again, and is forgotten when it closes. Main thread only.
class PanelController final : public CreateTagForm::Owner,
                              public QuickSwitcher::Owner,
                              public WelcomeForm::Owner {
  public:
    struct Services {
        TagManager& manager;
        const SpaceIdentifier& spaces;
        EditingContext& editingContext;
        Settings& settings;
        platform::RunLoop& runLoop;
        platform::MouseMonitor& mouse;
        PanelHost& host;
        keyboard_shortcuts::Recorder::Services recorder;
        PrivacyPermissions& permissions;
        std::function<About()> about;
    };
    explicit PanelController(const Services& services);
    ~PanelController() override;
    PanelController(const PanelController&) = delete;
    PanelController& operator=(const PanelController&) = delete;

    // For a new tag on that Space; without one, on the Space that is current when it is made.
    void showCreatePanel(const std::optional<std::string>& spaceUUID);
    void showEditPanel();
    void showSettingsPanel() { show(PanelKind::Settings); }
    void showAbout() { show(PanelKind::About); }
    void showWelcome(WelcomeForm::Mode mode);
    void showQuickSwitcher();
    // The same, but a panel that is on the screen closes.
    void toggleCreatePanel(const std::optional<std::string>& spaceUUID);
    void toggleEditPanel();

    // Brings the open panels to the user, the one that was shown last in front; without any, shows the list.
    void bringToFront();

    [[nodiscard]] bool isVisible(PanelKind kind) const;
    void close(PanelKind kind);

  private:
    class Panel;

    // What the forms ask for.
    void createTag(const std::string& label, const std::string& colorHex) override;
    void cancelCreateTag() override { close(PanelKind::CreateTag); }
    void navigate(const MenuSpaceRow& row) override;
    void onClose() override { close(PanelKind::QuickSwitcher); }
    void closeWelcome() override { close(PanelKind::Welcome); }
    void tagFirstSpace() override;

    void show(PanelKind kind);
    [[nodiscard]] std::vector<MenuSpaceRow> spaceRows() const;
    [[nodiscard]] std::string randomPaletteColor();
    void forget(PanelKind kind);
    [[nodiscard]] std::unique_ptr<Panel>& panel(PanelKind kind) {
        return panels_.at(static_cast<std::size_t>(kind));
    }
    [[nodiscard]] const std::unique_ptr<Panel>& panel(PanelKind kind) const {
        return panels_.at(static_cast<std::size_t>(kind));
    }

    Services services_;
    std::optional<std::string> spaceOfNewTag_;
    WelcomeForm::Mode welcomeMode_ = WelcomeForm::Mode::FirstRun;
    std::random_device random_;
    std::array<std::unique_ptr<Panel>, 6> panels_;
    std::vector<PanelKind> open_;  // the one that was shown last at the end
    DeferredDeletion<Panel> closed_;
};

}  // namespace orvellos
