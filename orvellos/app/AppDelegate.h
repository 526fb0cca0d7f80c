#pragma once

#include <optional>

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/app/DiagnosticsReport.h"
#include "orvellos/app/Updater.h"
#include "orvellos/menu/OwnKeys.h"
#include "orvellos/menu/StatusItemController.h"
#include "orvellos/panels/PanelController.h"
#include "orvellos/panels/Toasts.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/TagManager.h"
#include "platform/Menus.h"
#include "platform/Processes.h"
#include "platform/RunLoop.h"

namespace orvellos {

// The life of the running application: lets only one instance run, starts the core and the user interface,
// and stops them at the end.
class AppDelegate final : public ApplicationCommands {
  public:
    // The services that exist once the user's tags are loaded.
    struct Core {
        TagManager& manager;
        Settings& settings;
        EditingContext& editingContext;
        keyboard_shortcuts::Registry& hotkeys;
    };
    // The composition root, which starts and ends the application.
    class Root {
      public:
        virtual ~Root() = default;
        // Loads the user's tags. Called once, when the core starts; the core outlives the delegate.
        [[nodiscard]] virtual Core makeCore() = 0;
        // Ends this application.
        virtual void quit() = 0;
    };
    // Where the user meets the application.
    struct UserInterface {
        platform::Alerts& alerts;
        PanelHost& panels;
        platform::MouseMonitor& mouse;
        platform::StatusItem& statusItem;
        platform::MenuBar& menuBar;
    };
    struct Services {
        const SpaceIdentifier& spaces;
        platform::RunLoop& runLoop;
        platform::RunningApplications& applications;
        const platform::Screens& screens;
        platform::UpdateService& updates;
        PrivacyPermissions& permissions;
        const platform::KeyNames& keyNames;
        platform::SystemShortcuts& systemShortcuts;
        UserInterface ui;
        DiagnosticsServices diagnostics;
        Root& root;
    };
    explicit AppDelegate(const Services& services) : services_(services) {}

    // Starts the core, at once or when another instance has ended. When it stays, this application ends.
    void applicationDidFinishLaunching();
    // Nothing is saved here: every change was written when it was made.
    void applicationWillTerminate();

  private:
    void saveDiagnostics() override;
    void checkForUpdates() override { updater_->checkForUpdates(); }
    void terminate() override { services_.root.quit(); }

    void installMainMenu();
    [[nodiscard]] std::optional<platform::ProcessId> findOtherInstance() const;
    void waitForExit(platform::ProcessId other, platform::Instant deadline);
    void deferTo(platform::ProcessId other);
    void startCore();
    void probeSpaceReader() const;
    void startUserInterface();
    void makePanels();
    void makeStatusItem();
    void welcomeUser();

    Services services_;
    std::optional<Core> core_;  // from the start of the core on
    std::optional<WaitingNote> waitingNote_;
    std::optional<Updater> updater_;
    std::optional<UndoToast> undoToast_;
    std::optional<OwnKeys> ownKeys_;
    std::optional<PanelController> panelController_;
    std::optional<StatusItemController> statusController_;
    platform::Subscription reopened_;
    platform::Timer nextStep_;
};

}  // namespace orvellos
