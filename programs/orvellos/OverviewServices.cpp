#include "programs/orvellos/OverviewServices.h"

#include <algorithm>

#include "platform/freedesktop/processes/Programs.h"

namespace programs {

using namespace platform::freedesktop;

namespace {

std::vector<std::string> programNames() {
    const auto names = platform::x11::OverviewPrograms::names();
    return {names.begin(), names.end()};
}

}  // namespace

OverviewServices::OverviewServices(MessageBus& bus, platform::RunLoop& runLoop,
                                   platform::x11::XConnection& connection, const platform::x11::Atoms& atoms,
                                   platform::x11::XEvents& events, platform::Screens& screens,
                                   platform::KeyMonitor& keys, SpaceKeys& spaceKeys)
    : kwin_(bus, runLoop),
      gnomeShell_(bus, ShellOverview::gnomeShell()),
      cinnamon_(bus, ShellOverview::cinnamon()),
      programs_(connection, atoms, events, runLoop, screens,
                std::ranges::any_of(platform::x11::OverviewPrograms::names(), isProgramInstalled)),
      windows_({&kwin_, &gnomeShell_, &cinnamon_, &programs_}),
      launcher_(bus, runLoop, {&kwin_, &gnomeShell_, &cinnamon_}, programNames()),
      hints_(events,
             [this, &spaceKeys] {
                 kwin_.overviewMayHaveChanged();
                 spaceKeys.kwinMayHaveOthers();
             }),
      keyPresses_(keys.addGlobalKeyDownMonitor([this](const platform::KeyEvent& event) {
          if (event.keyCode == platform::key::kMissionControl) kwin_.expectChange();
      })) {}

}  // namespace programs
