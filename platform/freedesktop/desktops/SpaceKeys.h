#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Keys.h"
#include "platform/freedesktop/bus/BusService.h"
#include "platform/freedesktop/desktops/DesktopAccelerators.h"
#include "platform/freedesktop/desktops/KwinShortcuts.h"

namespace platform::freedesktop {

// A shortcut of the desktop's own that switches the Space or opens the overview.
struct SpaceKey {
    std::uint32_t qtKey = 0;  // Qt's key code with its modifiers, or else
    std::string accelerator;  // the keys in GTK's spelling
    KeyEvent meaning;         // as a KeyMonitor reports it
    bool operator==(const SpaceKey&) const = default;
};

// What an action of the desktop's, by its own name for it, means to the application; absent when nothing.
[[nodiscard]] std::optional<KeyEvent> meaningOfAction(std::string_view name, std::string_view desktops);

// The keys by which the desktop switches the Space or opens its overview: KWin's, and the shortcuts in the
// desktop's settings, both followed. Window managers that cannot be asked have none here.
class SpaceKeys {
  public:
    // `changed` is called at a later turn of the main loop, whenever they may be others.
    SpaceKeys(MessageBus& bus, RunLoop& runLoop, DesktopAccelerators& accelerators,
              std::function<void(const std::vector<SpaceKey>&)> changed);

    // One of KWin's shortcuts has been pressed, which it may have since it loaded an effect.
    void kwinMayHaveOthers();

  private:
    void followKwin(bool isRunning);
    void readSoon();
    void read();
    void setKwins(const std::vector<KwinShortcut>& shortcuts);
    void setAccelerators(const std::vector<Accelerator>& accelerators);
    void tell() const;

    RunLoop& runLoop_;
    DesktopAccelerators& accelerators_;
    std::function<void(const std::vector<SpaceKey>&)> changed_;
    std::vector<SpaceKey> kwins_;
    std::vector<SpaceKey> others_;
    KwinShortcuts kwinShortcuts_;
    Timer effectsLoaded_;
    Timer settled_;
    Subscription reading_;
    Subscription kwinsChange_;
    std::vector<Subscription> acceleratorsChange_;
    BusServiceWatch kwinRuns_;
};

}  // namespace platform::freedesktop
