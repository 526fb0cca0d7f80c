#include "programs/orvellos/Desktop.h"

#include <fmt/format.h>

#include <cstdlib>

#include "orvellos/app/DiagnosticsReport.h"
#include "orvellos/base/DebugLog.h"
#include "platform/freedesktop/desktops/CurrentDesktop.h"
#include "platform/freedesktop/processes/ProgramLocations.h"
#include "platform/freedesktop/processes/StandardStreams.h"
#include "programs/ScriptRunner.h"

namespace {

// The main thread never waits longer for the display server than a frame lasts.
constexpr auto kPatienceWhileRunning = std::chrono::milliseconds(16);
constexpr auto kLongestWaitForSpaces = std::chrono::seconds(1);

std::string_view displayName() {
    const char* display = std::getenv("DISPLAY");
    return display ? display : "";
}

// Every atom that the services below use, asked for in one round trip instead of one each.
platform::x11::Atoms internAtoms(platform::x11::XConnection& connection) {
    using namespace platform::x11;
    const auto compositor = SelectionWatch::atomName(connection, X11WindowSystem::kCompositorSelection);
    const auto tray = SelectionWatch::atomName(connection, SystemTray::kSelection);
    std::vector<std::string_view> names = {compositor, tray};
    const auto add = [&](std::span<const std::string_view> more) {
        names.insert(names.end(), more.begin(), more.end());
    };
    add(Atoms::names());
    add(TagWindowAtoms::kNames);
    add(FullScreenWindows::kAtomNames);
    add(X11Screens::kAtomNames);
    add(X11SpaceServer::kAtomNames);
    add(WindowActivation::kAtomNames);
    add(SystemTray::kAtomNames);
    static_cast<void>(connection.intern(names));
    return Atoms::intern(connection);
}

}  // namespace

Desktop::Core::Core(Desktop& desktop)
    : defaults(desktop.files_, desktop.runLoop_,
               platform::freedesktop::defaultsFilePath(desktop.folders_.configHome()),
               [](std::string_view message) { orvellos::logGeneral(fmt::format("orvello: {}", message)); }),
      settings(defaults, desktop.loginItem_, desktop.screens_.mainScreen()),
      hotkeys({defaults, desktop.keys_.hotKeys(), desktop.keys_.names(),
               platform::freedesktop::writeStandardOutput}),
      store(desktop.files_, desktop.runLoop_, orvellos::tagFolder(desktop.folders_)),
      tagManager({{desktop.windowSystem_, desktop.runLoop_, desktop.screens_, desktop.textMeasurer_, settings,
                   editingContext},
                  desktop.spaces_,
                  desktop.spaceServer_,
                  desktop.screens_,
                  desktop.screens_,
                  desktop.overview_.windows(),
                  desktop.keys_.monitor(),
                  desktop.session_,
                  desktop.overview_.launcher(),
                  {desktop.processes_, desktop.shortcuts_, desktop.shortcuts_, desktop.permissions_,
                   desktop.interface_.alerts(), desktop.settingsPages_}},
                 store) {}

Desktop::Desktop(platform::x11::XConnection& connection, ui::QtRunLoop& runLoop,
                 platform::freedesktop::SystemdLibrary& systemd, double scale, std::function<void()> quit)
    : runLoop_(runLoop),
      bus_(systemd, runLoop, runLoop),
      kwinDesktops_(bus_),
      loginItem_(files_, folders_.configHome(), platform::freedesktop::ProgramLocations().command()),
      instanceLock_(displayName(), runLoop),
      processes_(runLoop,
                 [this](const std::string&) { return programs::scriptRunner(spaceServer_.facts().current); }),
      settingsPages_(platform::freedesktop::currentDesktops()),
      fileBrowser_(bus_),
      system_(files_),
      atoms_(internAtoms(connection)),
      events_(connection, runLoop, runLoop),
      screens_(connection, events_, runLoop, scale),
      spaceServer_(connection, atoms_, events_, runLoop,
                   [this](auto callback) { kwinCall_ = kwinDesktops_.request(std::move(callback)); }),
      windowSystem_(connection, events_, runLoop, screens_, painter_,
                    [this] { return spaceServer_.facts(); }),
      switching_(
          connection, atoms_, [this] { return spaceServer_.canSwitch(); },
          [this] { return spaceServer_.lastTime(); }),
      shortcuts_(connection, atoms_,
                 {[this] { return spaceServer_.facts(); }, [this] { return spaceServer_.canSwitch(); },
                  [this] { return spaceServer_.lastTime(); }}),
      keys_(bus_, runLoop, connection, events_),
      permissions_({[this] { return spaceServer_.canSwitch(); },
                    [this] { return keys_.rawInput().isAvailable(); },
                    [this] { settingsPages_.openUrl(settingsUrl(orvellos::NavRemedy::Accessibility)); }}),
      overview_(bus_, runLoop, connection, atoms_, events_, screens_, keys_.monitor(), keys_.spaceKeys()),
      interface_({bus_, runLoop, connection, events_, keys_.rawInput(), screens_, windowSystem_,
                  [this] { return spaceServer_.facts(); }, [this] { return spaceServer_.lastTime(); }}),
      screenPower_(connection, events_),
      systemBus_(systemd, runLoop, runLoop, [] { return platform::freedesktop::systemBusAddress(); }),
      updates_(systemBus_, {"orvellos", "orvello"}),
      login_(systemBus_, platform::freedesktop::processEnvironment("XDG_SESSION_ID")),
      session_(login_, {[this](auto action) { return screenPower_.onEvent(std::move(action)); }}),
      spaces_(spaceServer_, windowSystem_, switching_, screens_, screens_),
      privacy_({permissions_,
                permissions_,
                interface_.applicationActivation(),
                settingsPages_,
                fileBrowser_,
                openCommand_,
                interface_.alerts(),
                runLoop,
                {"org.norvath.orvello", platform::freedesktop::ProgramLocations().command()},
                quit}),
      delegate_({spaces_, runLoop, instanceLock_, screens_, updates_, privacy_, keys_.names(),
                 keys_.systemShortcuts(), interface_.parts(), [this] { return makeCore(); },
                 std::move(quit)}),
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

orvellos::AppDelegate::Core Desktop::makeCore() {
    auto& core = core_.emplace(*this);
    interface_.rememberPlacesIn(core.defaults);
    return {core.tagManager,
            core.settings,
            core.editingContext,
            core.hotkeys,
            [this] { saveDiagnostics(); },
            [this] { return orvellos::buildDateText(files_, system_); }};
}

void Desktop::saveDiagnostics() {
    orvellos::saveDiagnostics({files_, folders_, fileBrowser_, runLoop_, system_}, core_->settings,
                              core_->tagManager.tags());
}

void Desktop::launch() {
    if (spaceServer_.copyManagedDisplaySpaces()) return launchNow();
    spacesKnown_ = spaceServer_.onActiveSpaceChanged([this] { launchNow(); });
    launchDeadline_ = runLoop_.after(kLongestWaitForSpaces, [this] { launchNow(); });
}

void Desktop::launchNow() {
    spacesKnown_.cancel();
    launchDeadline_.cancel();
    delegate_.applicationDidFinishLaunching();
}

void Desktop::terminate() {
    delegate_.applicationWillTerminate();
}
