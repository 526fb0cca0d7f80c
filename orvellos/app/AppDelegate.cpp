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
constexpr auto kExitCheck = platform::seconds(0.2);
// By then the window manager has shown the tags, which taking keys and making panels would have held up.
constexpr auto kTagsAreShown = platform::seconds(0.05);

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
    auto menus = mainMenu(services_.terminate);
    log(LogCategory::Nav, fmt::format("installed main menu: {} top-level items", menus.size()));
    services_.ui.menuBar.setMainMenu(std::move(menus));
}

std::optional<platform::ProcessId> AppDelegate::findOtherInstance() const {
    const auto& applications = services_.applications;
    for (const auto identifier : kBundleIdentifiers)
        for (const auto process : applications.withBundleIdentifier(identifier))
            if (process != applications.currentProcess()) return process;
    return std::nullopt;
}

void AppDelegate::waitForExit(platform::ProcessId other, platform::Instant deadline) {
    nextStep_.cancel();
    if (services_.applications.hasTerminated(other)) return startCore();
    if (services_.runLoop.now() >= deadline) return deferTo(other);
    nextStep_ =
        services_.runLoop.after(kExitCheck, [this, other, deadline] { waitForExit(other, deadline); });
}

void AppDelegate::deferTo(platform::ProcessId other) {
    logGeneral(fmt::format("orvello: deferring to running instance (pid {}) and quitting", other));
    services_.applications.activate(other);
    services_.terminate();
}

void AppDelegate::startCore() {
    probeSpaceReader();
    core_.emplace(services_.makeCore());
    core_->manager.start();
    nextStep_ = services_.runLoop.after(kTagsAreShown, [this] { startUserInterface(); });
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
    const OwnKeys ownKeys = {hotkeys, services_.keyNames, ui.menuBar,
                             [this] { return statusController_->buildMenu(); }};
    panelController_.emplace(PanelController::Services{
        core_->manager,
        services_.spaces,
        core_->editingContext,
        core_->settings,
        services_.runLoop,
        ui.mouse,
        ui.panels,
        {hotkeys, services_.keyNames, services_.systemShortcuts, ui.alerts,
         [ownKeys](const auto& keys, const auto& name) { return ownKeys.useOf(keys, name); }},
        services_.permissions,
        [core = &*core_] { return makeAbout(core->hotkeys, core->buildDateText()); }});
}

void AppDelegate::makeStatusItem() {
    auto& hotkeys = core_->hotkeys;
    statusController_.emplace(StatusItemController::Services{
        core_->manager, services_.spaces, core_->settings, *panelController_, services_.runLoop,
        services_.ui.statusItem, [&hotkeys](const auto& name) { return hotkeys.displayText(name); },
        core_->saveDiagnostics, [this] { updater_->checkForUpdates(); }, services_.terminate});
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

void AppDelegate::applicationWillTerminate() {
    nextStep_.cancel();
    if (core_) core_->manager.stop();
}

}  // namespace orvellos
