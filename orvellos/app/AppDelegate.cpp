#include "orvellos/app/AppDelegate.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "orvellos/base/DebugLog.h"
#include "orvellos/menu/Hotkeys.h"
#include "orvellos/menu/OwnKeys.h"

namespace orvellos {

namespace {

// The two flavours of the application; each defers to the other.
constexpr std::array<std::string_view, 2> kBundleIdentifiers = {"org.norvath.orvello",
                                                                "org.norvath.orvello.pro"};
constexpr auto kLongestWaitForExit = platform::seconds(3);
constexpr auto kExitCheckInterval = platform::seconds(0.2);
// The window manager shows the tags meanwhile, which taking keys and making panels would hold up.
constexpr auto kUserInterfaceDelay = platform::seconds(0.05);

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
    installMainMenu();
    const auto other = findOtherInstance();
    if (!other) return startCore();
    logGeneral(
        fmt::format("orvello: another instance detected (pid {}) — waiting to see if it exits", *other));
    waitForExit(*other, services_.runLoop.now() + kLongestWaitForExit);
}

void AppDelegate::installMainMenu() {
    auto menus = mainMenu([this] { terminate(); });
    log(LogCategory::Nav, fmt::format("installed main menu: {} top-level items", menus.size()));
    services_.ui.menuBar.setMainMenu(std::move(menus));
}

std::optional<platform::ProcessId> AppDelegate::findOtherInstance() const {
    auto& applications = services_.applications;
    for (const auto identifier : kBundleIdentifiers)
        for (const auto process : applications.withBundleIdentifier(identifier))
            if (process != applications.currentProcess()) return process;
    return std::nullopt;
}

void AppDelegate::waitForExit(platform::ProcessId other, platform::Instant deadline) {
    nextStep_.cancel();
    if (services_.applications.takeOver(other)) return startCore();
    if (services_.runLoop.now() >= deadline) return deferTo(other);
    nextStep_ = services_.runLoop.after(kExitCheckInterval,
                                        [this, other, deadline] { waitForExit(other, deadline); });
}

void AppDelegate::deferTo(platform::ProcessId other) {
    logGeneral(fmt::format("orvello: deferring to running instance (pid {}) and quitting", other));
    services_.applications.activate(other);
    terminate();
}

void AppDelegate::startCore() {
    probeSpaceReader();
    core_.emplace(services_.root.makeCore());
    core_->manager.start();
    nextStep_ = services_.runLoop.after(kUserInterfaceDelay, [this] { startUserInterface(); });
}

void AppDelegate::startUserInterface() {
    auto& manager = core_->manager;
    auto& ui = services_.ui;
    waitingNote_.emplace(services_.screens, ui.panels);
    updater_.emplace(services_.updates, ui.alerts, *waitingNote_);
    undoToast_.emplace(services_.runLoop, services_.screens, ui.panels);
    manager.showUndoToast = [this](const auto& message, auto undo) {
        undoToast_->show(message, std::move(undo));
    };
    makePanels();
    manager.onTagClicked = [this] { panelController_->toggleEditPanel(); };
    reopened_ = services_.applications.onActivated([this] { panelController_->bringToFront(); });
    makeStatusItem();
    installHotkeys(core_->hotkeys, {manager, services_.spaces, core_->settings, *panelController_});
    welcomeUser();
}

void AppDelegate::makePanels() {
    auto& hotkeys = core_->hotkeys;
    auto& ui = services_.ui;
    ownKeys_.emplace(OwnKeys::Services{
        .hotkeys = hotkeys, .keyNames = services_.keyNames, .menuBar = ui.menuBar, .statusMenu = [this] {
            return statusController_->buildMenu();
        }});
    panelController_.emplace(PanelController::Services{
        .manager = core_->manager,
        .spaces = services_.spaces,
        .editingContext = core_->editingContext,
        .settings = core_->settings,
        .runLoop = services_.runLoop,
        .mouse = ui.mouse,
        .host = ui.panels,
        .recorder = {.registry = hotkeys,
                     .keyNames = services_.keyNames,
                     .systemShortcuts = services_.systemShortcuts,
                     .alerts = ui.alerts,
                     .ownUses = *ownKeys_},
        .permissions = services_.permissions,
        .about = [this] {
            const auto& diagnostics = services_.diagnostics;
            return makeAbout(core_->hotkeys, buildDateText(diagnostics.files, diagnostics.system));
        }});
}

void AppDelegate::makeStatusItem() {
    statusController_.emplace(StatusItemController::Services{.manager = core_->manager,
                                                             .spaces = services_.spaces,
                                                             .settings = core_->settings,
                                                             .panels = *panelController_,
                                                             .runLoop = services_.runLoop,
                                                             .statusItem = services_.ui.statusItem,
                                                             .hotkeys = core_->hotkeys,
                                                             .commands = *this});
}

void AppDelegate::welcomeUser() {
    const auto& settings = core_->settings;
    const bool hasSeenAny = settings.hasSeenWelcome.get();
    if (!hasSeenAny || settings.lastWelcomeVersion.get() < kCurrentWelcomeVersion)
        panelController_->showWelcome(hasSeenAny ? WelcomeForm::Mode::WhatsNew : WelcomeForm::Mode::FirstRun);
    else if (core_->manager.tags().empty())
        panelController_->showCreatePanel(std::nullopt);
}

void AppDelegate::probeSpaceReader() const {
    const auto current = services_.spaces.currentSpaceUUID();
    logGeneral(current
                   ? "orvello-pro: SkyLight bridge OK, active space UUID=" + *current
                   : "orvello-pro: SkyLight bridge returned nil — symbols resolved but no space reported");
    logGeneral("orvello-pro: switch symbols — " + services_.spaces.symbolStatusLine());
}

void AppDelegate::saveDiagnostics() {
    orvellos::saveDiagnostics(services_.diagnostics, core_->settings, core_->manager.tags());
}

void AppDelegate::applicationWillTerminate() {
    nextStep_.cancel();
    if (core_) core_->manager.stop();
}

}  // namespace orvellos
