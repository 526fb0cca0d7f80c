#include "programs/orvellos/X11Application.h"

#include <fmt/format.h>

#include <cstdlib>

#include "orvellos/base/DebugLog.h"
#include "platform/freedesktop/desktops/CurrentDesktop.h"
#include "platform/freedesktop/processes/Programs.h"
#include "platform/freedesktop/processes/StandardStreams.h"
#include "programs/ScriptRunner.h"

namespace programs {

namespace {

// The main thread never waits longer for the display server than a frame lasts.
constexpr auto kPatienceWhileRunning = std::chrono::milliseconds(16);
constexpr auto kLongestWaitForSpaces = std::chrono::seconds(1);

std::string_view displayName() {
    const char* display = std::getenv("DISPLAY");
    return display ? display : "";
}

}  // namespace

X11Application::Core::Core(X11Application& application)
    : defaults(application.files_, application.runLoop_,
               platform::freedesktop::defaultsFilePath(application.folders_.configHome()),
               [](std::string_view message) { orvellos::logGeneral(fmt::format("orvello: {}", message)); }),
      settings(defaults, application.loginItem_, application.screens_.mainScreen()),
      hotkeys({.defaults = defaults,
               .hotKeys = application.keys_.hotKeys(),
               .keyNames = application.keys_.names(),
               .standardOutput = platform::freedesktop::writeStandardOutput}),
      store(application.files_, application.runLoop_, orvellos::tagFolder(application.folders_)),
      tagManager({.windows = {.windowSystem = application.windowSystem_,
                              .runLoop = application.runLoop_,
                              .screens = application.screens_,
                              .textMeasurer = application.textMeasurer_,
                              .settings = settings,
                              .editingContext = editingContext},
                  .spaces = application.spaces_,
                  .spaceNotifications = application.spaceServer_,
                  .screens = application.screens_,
                  .onScreenWindows = application.overview_.windows(),
                  .keys = application.keys_.monitor(),
                  .session = application.session_,
                  .launcher = application.overview_.launcher(),
                  .navigation = {.processes = application.processes_,
                                 .shortcuts = application.shortcuts_,
                                 .permissions = application.permissions_,
                                 .alerts = application.interface_.alerts(),
                                 .urls = application.settingsPages_}},
                 store) {}

X11Application::X11Application(platform::x11::XConnection& connection, ui::QtRunLoop& runLoop,
                               platform::freedesktop::SystemdLibrary& systemd, double scale,
                               std::function<void()> quit)
    : runLoop_(runLoop),
      quit_(std::move(quit)),
      bus_(systemd, runLoop, runLoop),
      kwinDesktops_(bus_),
      loginItem_(files_, folders_.configHome(), platform::freedesktop::ProgramLocations().command()),
      instanceLock_(displayName(), runLoop),
      processes_(runLoop, [this](const std::string&) { return scriptRunner(spaceServer_.facts().current); }),
      settingsPages_(platform::freedesktop::currentDesktops()),
      fileBrowser_(bus_),
      system_(files_),
      atoms_(platform::x11::Atoms::intern(connection)),
      events_(connection, runLoop, runLoop),
      screens_(connection, atoms_, events_, runLoop, scale),
      spaceServer_(connection, atoms_, events_, runLoop,
                   [this](auto callback) { kwinCall_ = kwinDesktops_.request(std::move(callback)); }),
      windowSystem_(connection, atoms_, events_, runLoop, screens_, painter_, spaceServer_),
      switching_(connection, atoms_, spaceServer_),
      shortcuts_(connection, atoms_, spaceServer_),
      keys_(bus_, runLoop, connection, events_),
      permissions_(spaceServer_, keys_.rawInput(),
                   [this] { settingsPages_.openUrl(settingsUrl(orvellos::NavRemedy::Accessibility)); }),
      overview_(bus_, runLoop, connection, atoms_, events_, screens_, keys_.monitor(), keys_.spaceKeys()),
      interface_({.bus = bus_,
                  .runLoop = runLoop,
                  .connection = connection,
                  .atoms = atoms_,
                  .events = events_,
                  .rawInput = keys_.rawInput(),
                  .screens = screens_,
                  .windowSystem = windowSystem_,
                  .desktops = spaceServer_}),
      screenPower_(connection, events_),
      systemBus_(systemd, runLoop, runLoop, [] { return platform::freedesktop::systemBusAddress(); }),
      updates_(systemBus_, {"orvellos", "orvello"}),
      login_(systemBus_, platform::freedesktop::processEnvironment("XDG_SESSION_ID")),
      session_(login_, {[this](auto action) { return screenPower_.onEvent(std::move(action)); }}),
      spaces_(spaceServer_, windowSystem_, switching_, screens_),
      privacy_(privacyServices()),
      delegate_(delegateServices()),
      desktopsRenumbered_(
          spaceServer_.onDesktopsRenumbered([this] { windowSystem_.desktopsWereRenumbered(); })),
      windowManagerChanged_(spaceServer_.onWindowManagerChanged([this] {
          windowSystem_.reassertStates();
          interface_.windowManagerChanged();
      })),
      overviewKindChanged_(
          overview_.kwin().followKind([this](auto kind) { windowSystem_.setOverview(kind); })),
      overviewMayOpenChanged_(
          overview_.windows().followMayOpen([this](bool may) { windowSystem_.setOverviewMayOpen(may); })) {
    connection.setPatience(kPatienceWhileRunning);
}

orvellos::PrivacyPermissions::Services X11Application::privacyServices() {
    return {.permissions = permissions_,
            .activation = interface_.applicationActivation(),
            .urls = settingsPages_,
            .fileBrowser = fileBrowser_,
            .processes = openCommand_,
            .alerts = interface_.alerts(),
            .runLoop = runLoop_,
            .bundle = {.identifier = "org.norvath.orvello",
                       .path = platform::freedesktop::ProgramLocations().command()},
            .terminate = quit_};
}

orvellos::AppDelegate::Services X11Application::delegateServices() {
    return {.spaces = spaces_,
            .runLoop = runLoop_,
            .applications = instanceLock_,
            .screens = screens_,
            .updates = updates_,
            .permissions = privacy_,
            .keyNames = keys_.names(),
            .systemShortcuts = keys_.systemShortcuts(),
            .ui = interface_.parts(),
            .diagnostics = {.files = files_,
                            .folders = folders_,
                            .fileBrowser = fileBrowser_,
                            .clock = runLoop_,
                            .system = system_},
            .root = *this};
}

orvellos::AppDelegate::Core X11Application::makeCore() {
    auto& core = core_.emplace(*this);
    interface_.rememberPlacesIn(core.defaults);
    return {.manager = core.tagManager,
            .settings = core.settings,
            .editingContext = core.editingContext,
            .hotkeys = core.hotkeys};
}

void X11Application::launch() {
    if (spaceServer_.copyManagedDisplaySpaces()) return launchNow();
    spacesKnown_ = spaceServer_.onActiveSpaceChanged([this] { launchNow(); });
    launchDeadline_ = runLoop_.after(kLongestWaitForSpaces, [this] { launchNow(); });
}

void X11Application::launchNow() {
    spacesKnown_.cancel();
    launchDeadline_.cancel();
    delegate_.applicationDidFinishLaunching();
}

void X11Application::terminate() {
    delegate_.applicationWillTerminate();
}

}  // namespace programs
