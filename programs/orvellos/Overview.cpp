#include "programs/orvellos/Overview.h"

using namespace platform::freedesktop;

namespace {

constexpr auto kKwinHasStarted = std::chrono::seconds(10);

std::vector<std::string> programNames() {
    const auto names = platform::x11::OverviewPrograms::names();
    return {names.begin(), names.end()};
}

}  // namespace

Overview::Overview(SessionBus& bus, platform::RunLoop& runLoop, platform::x11::XConnection& connection,
                   const platform::x11::Atoms& atoms, platform::x11::XEvents& events,
                   const platform::Screens& screens, platform::x11::X11KeyMonitor& keys)
    : runLoop_(runLoop),
      keys_(keys),
      kwin_(bus, runLoop),
      gnomeShell_(bus, ShellOverview::gnomeShell()),
      cinnamon_(bus, ShellOverview::cinnamon()),
      programs_(connection, atoms, events, runLoop, screens),
      windows_({&kwin_, &gnomeShell_, &cinnamon_, &programs_}),
      launcher_(bus, runLoop, {&kwin_, &gnomeShell_, &cinnamon_}, programNames()),
      hints_(events,
             [this] {
                 kwin_.overviewMayHaveChanged();
                 askForKdeKeys();
             }),
      kdeKeys_(bus),
      kwinRuns_(bus, "org.kde.KWin", [this](bool isRunning) { followKwin(isRunning); }),
      gnomeShellRuns_(bus, "org.gnome.Shell", [this](bool) { useShortcuts(); }),
      keyPresses_(keys.addGlobalKeyDownMonitor([this](const platform::KeyEvent& event) {
          if (event.keyCode == platform::key::kMissionControl) kwin_.expectChange();
      })) {}

// KWin announces its keys when it has loaded its effects.
void Overview::followKwin(bool isRunning) {
    askLater_.cancel();
    if (!isRunning) return;
    askForKdeKeys();
    askLater_ = runLoop_.after(kKwinHasStarted, [this] { askForKdeKeys(); });
}

// Also whenever one of KWin's shortcuts may have been pressed, for the user may have changed them.
void Overview::askForKdeKeys() {
    if (!kwinRuns_.isRunning()) return;
    kdeKeys_.request([this](const std::vector<std::uint32_t>& qtKeys) {
        kdeQtKeys_ = qtKeys;
        useShortcuts();
    });
}

void Overview::useShortcuts() {
    auto shortcuts = platform::x11::shortcutsOfQtKeys(kdeQtKeys_);
    if (gnomeShellRuns_.isRunning())
        for (const auto& tap : platform::x11::superTaps()) shortcuts.push_back(tap);
    keys_.setOverviewShortcuts(std::move(shortcuts));
}
