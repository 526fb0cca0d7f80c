#include "programs/orvellos/Desktop.h"

#include <fmt/format.h>

#include "orvellos/DebugLog.h"
#include "platform/freedesktop/ProgramLocations.h"

namespace {

// The main thread never waits longer for the display server than a frame lasts.
constexpr auto kPatienceWhileRunning = std::chrono::milliseconds(16);
constexpr auto kLongestWaitForSpaces = std::chrono::seconds(1);

}  // namespace

Desktop::Core::Core(Desktop& desktop)
    : defaults(desktop.files_, desktop.runLoop_,
               platform::freedesktop::defaultsFilePath(desktop.folders_.configHome()),
               [](std::string_view message) { orvellos::logGeneral(fmt::format("orvello: {}", message)); }),
      settings(defaults, desktop.loginItem_, desktop.screens_.mainScreen()),
      store(desktop.files_, desktop.runLoop_, orvellos::tagFolder(desktop.folders_)),
      tagManager({{desktop.windowSystem_, desktop.runLoop_, desktop.screens_, desktop.textMeasurer_, settings,
                   editingContext},
                  desktop.spaces_,
                  desktop.spaceServer_,
                  desktop.screens_,
                  desktop.screens_},
                 store) {}

Desktop::Desktop(platform::x11::XConnection& connection, ui::QtRunLoop& runLoop,
                 platform::freedesktop::SystemdLibrary& systemd, double scale)
    : runLoop_(runLoop),
      bus_(systemd, runLoop, runLoop),
      kwinDesktops_(bus_),
      loginItem_(files_, folders_.configHome(), platform::freedesktop::ProgramLocations().command()),
      atoms_(platform::x11::Atoms::intern(connection)),
      events_(connection, runLoop, runLoop),
      screens_(connection, events_, runLoop, scale),
      spaceServer_(connection, atoms_, events_, runLoop,
                   [this](auto callback) { kwinCall_ = kwinDesktops_.requestIds(std::move(callback)); }),
      windowSystem_(connection, events_, runLoop, screens_, painter_,
                    [this] { return spaceServer_.facts(); }),
      switching_(
          connection, atoms_, [this] { return spaceServer_.canSwitch(); },
          [this] { return spaceServer_.lastTime(); }),
      spaces_(spaceServer_, windowSystem_, switching_, screens_, screens_),
      delegate_(spaces_, [this]() -> orvellos::TagManager& { return core_.emplace(*this).tagManager; }),
      windowManagerChanged_(spaceServer_.onWindowManagerChanged([this] { windowSystem_.reassertStates(); })) {
    connection.setPatience(kPatienceWhileRunning);
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
