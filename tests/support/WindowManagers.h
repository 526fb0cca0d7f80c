#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace desktop_test {

enum class WindowManager { None, Openbox, Xfwm4, Kwin };

struct WindowManagerOptions {
    WindowManager kind = WindowManager::Openbox;
    int desktops = 4;
    std::vector<std::string> desktopIds = {};  // KWin's ids; those left out are made up
    bool composited = false;
};

// How a window manager is started.
struct WindowManagerLaunch {
    std::vector<std::string> command;
    Environment environment;  // on top of the desktop's
};

// The window manager's name, for messages and test names.
[[nodiscard]] std::string nameOf(WindowManager kind);
// Whether it needs a session bus.
[[nodiscard]] bool needsSessionBus(WindowManager kind);
// Writes the window manager's configuration to the folder that will be its XDG_CONFIG_HOME.
void writeConfiguration(const WindowManagerOptions& options, const std::filesystem::path& configFolder);
// The command that starts it; `replacing` takes over from one that runs.
[[nodiscard]] WindowManagerLaunch launchOf(const WindowManagerOptions& options,
                                           const std::filesystem::path& configFolder, bool replacing);

}  // namespace desktop_test
