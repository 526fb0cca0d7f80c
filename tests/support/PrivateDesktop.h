#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/InputDevices.h"
#include "tests/support/Process.h"
#include "tests/support/SessionBus.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WindowManagers.h"
#include "tests/support/XClient.h"

namespace desktop_test {

struct ScreenSize {
    int width = 1280;
    int height = 800;
};

struct DesktopOptions {
    std::optional<ScreenSize> screen = ScreenSize();  // absent: no X server, hence no window manager
    WindowManagerOptions windowManager = {};
    bool sessionBus = false;  // a window manager that needs a bus gets one anyway
    std::vector<std::string> serverArguments = {};
    bool monitors = false;  // a server whose monitors come and go: setMonitors()
};

// A desktop of the test's own: an X server on a free display, a window manager that is ready, a message bus
// when one is asked for, and empty private folders as the user's home. Everything that runs on it, detached
// programs included, ends with this object. At the first failure of the running test a picture of the screen
// is kept in the build's test-pictures folder.
//
//     PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin, .desktops = 3}});
//     const auto result = desktop.run({desktop.program("orvello"), "dump"});
class PrivateDesktop {
  public:
    // Throws std::runtime_error with what the server or the window manager said when one does not come up.
    explicit PrivateDesktop(DesktopOptions options = {});
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;
    ~PrivateDesktop();

    // The environment of the programs: PATH, HOME, the XDG folders, DISPLAY, the bus. Tests may change it.
    Environment environment;

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }
    [[nodiscard]] std::filesystem::path home() const { return folder() / "home"; }
    [[nodiscard]] std::filesystem::path configFolder() const { return home() / ".config"; }
    [[nodiscard]] std::filesystem::path dataFolder() const { return home() / ".local/share"; }
    [[nodiscard]] std::filesystem::path runtimeFolder() const { return folder() / "run"; }
    // The settings of a user who has seen the welcome, and these besides; the desktop starts with the former.
    void writeSettings(nlohmann::json settings = nlohmann::json::object()) const;
    // The settings of a user who starts the program for the first time.
    void removeSettings() const { std::filesystem::remove(settingsFile()); }
    [[nodiscard]] std::filesystem::path settingsFile() const {
        return configFolder() / "orvello/defaults.json";
    }
    // The project's program of that name: from its bin folder, or from its libexec folder.
    [[nodiscard]] static std::string program(const std::string& name);

    [[nodiscard]] Process start(const std::vector<std::string>& command) const {
        return {command, environment};
    }
    [[nodiscard]] CommandResult run(const std::vector<std::string>& command,
                                    std::chrono::milliseconds deadline = kGenerousDeadline) const {
        return runCommand(command, environment, deadline);
    }

    [[nodiscard]] const std::string& display() const { return display_; }
    // These throw std::bad_optional_access on a desktop without that part.
    [[nodiscard]] XClient& x() { return client_.value(); }
    [[nodiscard]] InputDevices devices() { return InputDevices(x()); }
    [[nodiscard]] Process& server() { return server_.value(); }
    [[nodiscard]] Process& windowManager() { return windowManager_.value(); }
    [[nodiscard]] SessionBus& bus() { return bus_.value(); }

    // Starts the window manager, again after one that has ended, and waits until it is ready.
    void startWindowManager();
    // Starts a second window manager that takes over from the first, and waits until it has.
    void replaceWindowManager();
    // Starts a compositor of its own beside the window manager (picom), or ends it.
    void startCompositor();
    void stopCompositor();

    // On a desktop with `monitors`: sets these up side by side from the left, the first as the primary one.
    // None at all is possible, too, three at most, of 1280×800, 1024×768 or 800×600.
    void setMonitors(const std::vector<ScreenSize>& monitors);

    // Opens or closes an overview of KWin's by its shortcut's name; false when KWin does not take it.
    [[nodiscard]] bool toggleOverview(const std::string& shortcut);

    // Asks for the desktop (counted from 0) and waits until it is the current one.
    [[nodiscard]] bool goToDesktop(std::uint32_t desktop);

  private:
    void makeFolders();
    void startServer();
    [[nodiscard]] std::vector<std::string> serverCommand() const;
    void setUpMonitors();
    void xrandr(std::vector<std::string> words) const;
    void startBus();
    void startShortcutDaemon();
    void launchWindowManager(bool replacing);
    void requireManagedWindow();
    // Throws when the state does not come, or the process ends before it does.
    static void require(Process& process, const std::string& what, const std::function<bool()>& isReady);

    class FailurePhotographer;
    std::unique_ptr<FailurePhotographer> photographer_;
    DesktopOptions options_;
    TemporaryFolder folder_;
    std::string display_;
    std::optional<Process> server_;
    std::optional<XClient> client_;
    std::optional<Process> busDaemon_;
    std::optional<SessionBus> bus_;
    std::optional<Process> shortcutDaemon_;
    std::optional<Process> windowManager_;
    std::optional<Process> compositor_;
};

}  // namespace desktop_test
