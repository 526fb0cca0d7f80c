#pragma once

#include "orvellos/app/AppDelegate.h"
#include "platform/freedesktop/desktops/DesktopColorScheme.h"
#include "platform/freedesktop/desktops/StatusNotifierHosts.h"
#include "platform/x11/input/X11MouseMonitor.h"
#include "platform/x11/tray/SystemTray.h"
#include "platform/x11/windows/WindowActivation.h"
#include "platform/x11/windows/X11WindowSystem.h"
#include "ui/panels/QtAlerts.h"
#include "ui/panels/QtPanelHost.h"
#include "ui/shell/X11Window.h"
#include "ui/status/MenuInput.h"
#include "ui/status/QtMenuBar.h"
#include "ui/status/QtStatusItem.h"

namespace programs {

// Where the user meets the application: its panels, alerts and menus, put together for this desktop.
class UserInterfaceServices {
  public:
    struct Services {
        platform::freedesktop::MessageBus& bus;
        platform::RunLoop& runLoop;
        platform::x11::XConnection& connection;
        const platform::x11::Atoms& atoms;
        platform::x11::XEvents& events;
        platform::x11::RawInput& rawInput;
        platform::x11::X11Screens& screens;
        platform::x11::X11WindowSystem& windowSystem;
        const platform::x11::DesktopSource& desktops;
    };
    explicit UserInterfaceServices(Services services);

    [[nodiscard]] orvellos::AppDelegate::UserInterface parts() {
        return {.alerts = alerts_,
                .panels = panelHost_,
                .mouse = mouse_,
                .statusItem = statusItem_,
                .menuBar = menuBar_};
    }
    [[nodiscard]] platform::Alerts& alerts() { return alerts_; }
    [[nodiscard]] platform::ApplicationActivation& applicationActivation() { return applicationActivation_; }
    // Where the places of windows that the user moves are kept from now on.
    void rememberPlacesIn(platform::DefaultsStore& defaults) { statusItem_.rememberPlaceIn(defaults); }
    void windowManagerChanged() { statusItem_.windowManagerChanged(); }

  private:
    void findStatusHost();

    ui::MenuClicks menuClicks_;
    platform::x11::WindowActivation activation_;
    platform::x11::X11MouseMonitor mouse_;
    ui::QtMenuBar menuBar_;
    ui::QtPanelHost panelHost_;
    ui::QtAlerts alerts_;
    ui::QtActivation applicationActivation_;
    platform::x11::SystemTray tray_;
    ui::QtStatusItem statusItem_;
    platform::freedesktop::StatusNotifierHosts statusNotifierHosts_;
    platform::freedesktop::DesktopColorScheme colorScheme_;
};

}  // namespace programs
