#include "programs/orvellos/Desktop.h"

#include "orvellos/DebugLog.h"
#include "platform/freedesktop/ProgramLocations.h"

namespace {

// The main thread never waits longer for the display server than a frame lasts.
constexpr auto kPatienceWhileRunning = std::chrono::milliseconds(16);
constexpr auto kLongestWaitForSpaces = std::chrono::seconds(1);

}  // namespace

Desktop::Desktop(platform::x11::XConnection& connection, ui::QtRunLoop& runLoop,
                 platform::freedesktop::SystemdLibrary& systemd, double scale)
    : runLoop_(runLoop),
      bus_(systemd, runLoop, runLoop),
      kwinDesktops_(bus_),
      defaults_(files_, runLoop, platform::freedesktop::defaultsFilePath(folders_.configHome()),
                [](std::string_view message) { orvellos::logGeneral(message); }),
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
      settings_(defaults_, loginItem_, screens_.mainScreen()),
      store_(files_, runLoop, orvellos::tagFolder(folders_)),
      tagManager_({{windowSystem_, runLoop, screens_, textMeasurer_, settings_, editingContext_},
                   spaces_,
                   spaceServer_,
                   screens_,
                   screens_},
                  store_),
      delegate_(spaces_, tagManager_),
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
