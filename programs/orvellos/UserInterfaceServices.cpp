#include "programs/orvellos/UserInterfaceServices.h"

#include <utility>

#include "ui/widgets/Appearance.h"

namespace programs {

namespace {

using platform::freedesktop::DesktopColorScheme;

ui::ColorScheme schemeOf(DesktopColorScheme::Preference preference) {
    switch (preference) {
        case DesktopColorScheme::Preference::Dark:
            return ui::ColorScheme::Dark;
        case DesktopColorScheme::Preference::Light:
            return ui::ColorScheme::Light;
        case DesktopColorScheme::Preference::None:
            break;
    }
    return ui::ColorScheme::Unknown;
}

}  // namespace

UserInterfaceServices::UserInterfaceServices(Services services)
    : activation_(services.connection, services.atoms, services.desktops),
      mouse_(services.rawInput, services.connection, menuClicks_),
      panelHost_(
          {.atoms = services.atoms,
           .menuBar = menuBar_,
           .screens = services.screens,
           .focus = activation_,
           .followCompositing = [&windowSystem = services.windowSystem](
                                    const auto& action) { return windowSystem.followCompositing(action); }}),
      alerts_(services.atoms, activation_),
      applicationActivation_(activation_),
      tray_(services.connection, services.atoms, services.events, [this] { findStatusHost(); }),
      statusItem_(
          {.runLoop = services.runLoop, .atoms = services.atoms, .tray = tray_, .screens = services.screens}),
      statusNotifierHosts_(services.bus, [this](bool) { findStatusHost(); }),
      colorScheme_(services.bus, [](auto preference) { ui::applyColorScheme(schemeOf(preference)); }) {
    findStatusHost();
}

void UserInterfaceServices::findStatusHost() {
    statusItem_.setHosts(statusNotifierHosts_.isThere(), tray_.owner());
}

}  // namespace programs
