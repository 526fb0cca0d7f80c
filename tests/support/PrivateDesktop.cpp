#include "tests/support/PrivateDesktop.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "tests/support/Picture.h"

namespace desktop_test {

namespace {

// A window manager that compiles its shaders in software on a busy machine takes its time.
constexpr std::chrono::seconds kStartDeadline(90);

// Passed on: where programs and libraries are, and how a sanitizer reports.
void inherit(Environment& environment) {
    for (const auto* name : {"PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char* value = std::getenv(name)) environment[name] = value;
}

// Every name is free; the one service that is started on demand is the settings store that xfwm4 reads.
std::string busConfiguration(const std::filesystem::path& runtimeFolder,
                             const std::filesystem::path& servicesFolder) {
    return fmt::format(R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={}/bus</listen>
  <servicedir>{}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)",
                       runtimeFolder.string(), servicesFolder.string());
}

// The driver has outputs without a screen behind them; the first has these modes, the others are given them.
constexpr std::array kOutputs = {"DUMMY0", "DUMMY1", "DUMMY2"};
constexpr std::array kModes = {"1280x800", "1024x768", "800x600"};
constexpr const char* kMonitorsConfiguration = R"(
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoAddGPU" "false"
EndSection
Section "Monitor"
  Identifier "any"
  HorizSync 5-1000
  VertRefresh 5-200
EndSection
Section "Device"
  Identifier "card"
  Driver "dummy"
  VideoRam 64000
EndSection
Section "Screen"
  Identifier "screen"
  Device "card"
  Monitor "any"
  DefaultDepth 24
EndSection
)";

}  // namespace

// Listens to the running test and takes a picture of the screen at its first failure.
class PrivateDesktop::FailurePhotographer : public ::testing::EmptyTestEventListener {
  public:
    explicit FailurePhotographer(PrivateDesktop& desktop) : desktop_(desktop) {
        auto* tests = ::testing::UnitTest::GetInstance();
        tests->listeners().Append(this);
        // The test cannot be asked for later: it is locked while it reports.
        const auto* test = tests->current_test_info();
        auto name = fmt::format("{}.{}.png", test->test_suite_name(), test->name());
        std::ranges::replace(name, '/', '-');
        file_ = std::filesystem::path(ORVELLO_TEST_PICTURES) / name;
    }
    ~FailurePhotographer() override { ::testing::UnitTest::GetInstance()->listeners().Release(this); }

    void OnTestPartResult(const ::testing::TestPartResult& result) override {
        if (result.failed() && !std::exchange(done_, true)) keepPicture();
    }

  private:
    void keepPicture() {
        if (!desktop_.server().isRunning() || !desktop_.x().isAlive()) return;
        desktop_.server().signal(SIGCONT);  // a stopped server never answers
        try {
            takePicture(desktop_.x()).writePng(file_);
            std::cerr << "The screen at this failure: " << file_.string() << "\n";
        } catch (const std::runtime_error& error) {
            std::cerr << "No picture of this failure: " << error.what() << "\n";
        }
    }

    PrivateDesktop& desktop_;
    std::filesystem::path file_;
    bool done_ = false;
};

PrivateDesktop::PrivateDesktop(DesktopOptions options) : options_(std::move(options)) {
    makeFolders();
    writeSettings();
    if (options_.screen) startServer();
    const auto kind = options_.windowManager.kind;
    if (options_.sessionBus || (options_.screen && needsSessionBus(kind))) startBus();
    if (!options_.screen || kind == WindowManager::None) return;
    if (kind == WindowManager::Kwin) startShortcutDaemon();
    writeConfiguration(options_.windowManager, configFolder());
    startWindowManager();
    if (options_.windowManager.composited && kind == WindowManager::Openbox) startCompositor();
}

void PrivateDesktop::writeSettings(nlohmann::json settings) const {
    settings["hasSeenWelcome"] = true;
    settings["lastWelcomeVersion"] = 2;
    std::filesystem::create_directories(settingsFile().parent_path());
    std::ofstream(settingsFile()) << settings;
}

PrivateDesktop::~PrivateDesktop() {
    photographer_.reset();
    compositor_.reset();
    windowManager_.reset();
    shortcutDaemon_.reset();
    bus_.reset();
    busDaemon_.reset();
    client_.reset();
    server_.reset();
    const auto leftovers = [this] { return processesWithEnvironment(folder().string()); };
    for (const auto pid : leftovers()) ::kill(pid, SIGKILL);
    (void)waitUntil([&] { return leftovers().empty(); });
}

void PrivateDesktop::makeFolders() {
    inherit(environment);
    environment["LANG"] = "C.UTF-8";
    environment["LIBGL_ALWAYS_SOFTWARE"] = "1";
    environment["HOME"] = home();
    environment["TMPDIR"] = folder() / "tmp";
    environment["XDG_CONFIG_HOME"] = configFolder();
    environment["XDG_DATA_HOME"] = dataFolder();
    environment["XDG_CACHE_HOME"] = home() / ".cache";
    environment["XDG_STATE_HOME"] = home() / ".local/state";
    environment["XDG_RUNTIME_DIR"] = runtimeFolder();
    environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + (runtimeFolder() / "no-system-bus").string();
    for (const auto& path : {configFolder(), dataFolder(), runtimeFolder(), folder() / "tmp"})
        std::filesystem::create_directories(path);
    std::filesystem::permissions(runtimeFolder(), std::filesystem::perms::owner_all);
}

std::string PrivateDesktop::program(const std::string& name) {
    const auto inBin = std::filesystem::path(ORVELLO_BIN_FOLDER) / name;
    return std::filesystem::exists(inBin) ? inBin : std::filesystem::path(ORVELLO_LIBEXEC_FOLDER) / name;
}

void PrivateDesktop::require(Process& process, const std::string& what,
                             const std::function<bool()>& isReady) {
    bool ready = false;
    const auto isDecided = [&] { return (ready = isReady()) || !process.isRunning(); };
    if (!waitUntil(isDecided, kStartDeadline) || !ready)
        throw std::runtime_error(what + " did not start:\n" + process.standardError());
}

std::vector<std::string> PrivateDesktop::serverCommand() const {
    std::vector<std::string> command;
    if (options_.monitors) {
        const auto configuration = folder() / "xorg.conf";
        writeFile(configuration, kMonitorsConfiguration);
        command = {"Xorg",      "-config",     configuration, "-logfile", folder() / "xorg.log",
                   "-sharevts", "-novtswitch", "-keeptty"};
    } else {
        command = {"Xvfb", "-screen", "0",
                   fmt::format("{}x{}x24", options_.screen->width, options_.screen->height)};
    }
    for (const char* word : {"-displayfd", "1", "-nolisten", "tcp", "-noreset", "-dpi", "96"})
        command.emplace_back(word);
    command.insert(command.end(), options_.serverArguments.begin(), options_.serverArguments.end());
    return command;
}

void PrivateDesktop::startServer() {
    const auto command = serverCommand();
    server_.emplace(command, environment);
    require(*server_, command.front(), [this] { return server_->standardOutput().ends_with('\n'); });
    const auto number = server_->standardOutput();
    display_ = fmt::format(":{}", number.substr(0, number.size() - 1));
    environment["DISPLAY"] = display_;
    client_.emplace(display_);
    if (options_.monitors) setUpMonitors();
    // The benchmark command runs no test.
    if (::testing::UnitTest::GetInstance()->current_test_info())
        photographer_ = std::make_unique<FailurePhotographer>(*this);
}

void PrivateDesktop::startBus() {
    const auto services = folder() / "services";
    const auto xfconf = std::filesystem::path("org.xfce.Xfconf.service");
    std::filesystem::create_directories(services);
    std::filesystem::create_symlink("/usr/share/dbus-1/services" / xfconf, services / xfconf);
    const auto configuration = folder() / "bus.conf";
    writeFile(configuration, busConfiguration(runtimeFolder(), services));
    const auto address = "unix:path=" + (runtimeFolder() / "bus").string();
    environment["DBUS_SESSION_BUS_ADDRESS"] = address;
    busDaemon_.emplace(std::vector<std::string>{"dbus-daemon", "--nofork", "--print-address=1",
                                                "--config-file=" + configuration.string()},
                       environment);
    require(*busDaemon_, "dbus-daemon", [this] { return !busDaemon_->standardOutput().empty(); });
    bus_.emplace(address);
}

// KWin asks it for its shortcuts once, when it starts.
void PrivateDesktop::startShortcutDaemon() {
    shortcutDaemon_.emplace(std::vector<std::string>{"kglobalaccel5"}, environment);
    require(*shortcutDaemon_, "kglobalaccel5", [this] { return bus_->hasOwner("org.kde.kglobalaccel"); });
}

void PrivateDesktop::startWindowManager() {
    windowManager_.reset();
    if (!waitUntil([this] { return !client_->hasWindowManager(); }))
        throw std::runtime_error("the former window manager's window does not go");
    launchWindowManager(false);
}

void PrivateDesktop::replaceWindowManager() {
    auto former = std::exchange(windowManager_, std::nullopt);
    launchWindowManager(true);
    if (!former->wait(kStartDeadline)) throw std::runtime_error("the former window manager does not end");
}

void PrivateDesktop::launchWindowManager(bool replacing) {
    const auto& options = options_.windowManager;
    // A window manager that starts after another has ended may get the same window number.
    const auto formerCheck =
        replacing ? client_->cardinal(client_->root(), "_NET_SUPPORTING_WM_CHECK") : std::nullopt;
    auto launch = launchOf(options, configFolder(), replacing);
    launch.environment.insert(environment.begin(), environment.end());
    windowManager_.emplace(launch.command, launch.environment);
    require(*windowManager_, nameOf(options.kind), [&] {
        return client_->hasWindowManager() &&
               client_->cardinal(client_->root(), "_NET_SUPPORTING_WM_CHECK") != formerCheck &&
               client_->numberOfDesktops() == static_cast<std::uint32_t>(options.desktops) &&
               client_->currentDesktop() &&
               (options.kind != WindowManager::Kwin || bus_->hasOwner("org.kde.KWin")) &&
               (!options.composited || options.kind == WindowManager::Openbox || client_->hasCompositor());
    });
    requireManagedWindow();
}

// A window manager announces itself before it listens: openbox loses windows that are mapped in between. So
// it is ready when it manages a window. That window is this connection's, whose numbers are not given out
// again: KWin may still let go of it when the test's own window is there.
void PrivateDesktop::requireManagedWindow() {
    auto* connection = client_->connection();
    const auto name = nameOf(options_.windowManager.kind);
    const auto probe = xcb_generate_id(connection);
    const auto isManaged = [&] { return std::ranges::count(client_->clients(), probe) > 0; };
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, probe, client_->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    client_->setCardinals(probe, "_NET_WM_USER_TIME", std::array{0U});  // no focus
    require(*windowManager_, name, [&] {
        xcb_map_window(connection, probe);
        return waitUntil(isManaged, std::chrono::milliseconds(500));
    });
    xcb_destroy_window(connection, probe);
    require(*windowManager_, name, [&] { return !isManaged(); });
}

void PrivateDesktop::startCompositor() {
    compositor_.emplace(std::vector<std::string>{"picom", "--backend", "xrender", "--config", "/dev/null"},
                        environment);
    require(*compositor_, "picom", [this] { return client_->hasCompositor(); });
}

void PrivateDesktop::stopCompositor() {
    compositor_.reset();
}

void PrivateDesktop::setUpMonitors() {
    for (std::size_t i = 1; i < kOutputs.size(); ++i)
        for (const char* mode : kModes) xrandr({"--addmode", kOutputs[i], mode});
    setMonitors({*options_.screen});
}

void PrivateDesktop::setMonitors(const std::vector<ScreenSize>& monitors) {
    std::vector<std::string> words;
    int left = 0;
    for (std::size_t i = 0; i < kOutputs.size(); ++i) {
        words.insert(words.end(), {"--output", kOutputs[i]});
        if (i >= monitors.size()) {
            words.emplace_back("--off");
            continue;
        }
        const auto& [width, height] = monitors[i];
        words.insert(words.end(),
                     {"--mode", fmt::format("{}x{}", width, height), "--pos", fmt::format("{}x0", left)});
        if (i == 0) words.emplace_back("--primary");
        left += width;
    }
    xrandr(words);
}

void PrivateDesktop::xrandr(std::vector<std::string> words) const {
    words.insert(words.begin(), "xrandr");
    const auto result = run(words);
    if (result.status != 0) throw std::runtime_error("xrandr: " + result.standardError);
}

bool PrivateDesktop::toggleOverview(const std::string& shortcut) {
    return bus().call("org.kde.kglobalaccel", "/component/kwin", "org.kde.kglobalaccel.Component",
                      "invokeShortcut", shortcut);
}

bool PrivateDesktop::goToDesktop(std::uint32_t desktop) {
    x().switchToDesktop(desktop);
    return waitUntil([&] { return x().currentDesktop() == desktop; });
}

}  // namespace desktop_test
