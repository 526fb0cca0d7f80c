#pragma once

#include <functional>
#include <optional>

#include "KeyboardShortcuts/Registry.h"
#include "orvellos/app/AppDelegate.h"
#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/TagStore.h"
#include "orvellos/windows/EditingContext.h"
#include "orvellos/windows/TagManager.h"
#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/desktops/FileManagerBrowser.h"
#include "platform/freedesktop/desktops/KwinDesktops.h"
#include "platform/freedesktop/desktops/SettingsPages.h"
#include "platform/freedesktop/files/AutostartLoginItem.h"
#include "platform/freedesktop/files/JsonDefaultsStore.h"
#include "platform/freedesktop/files/OsRelease.h"
#include "platform/freedesktop/files/PosixFileSystem.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/processes/InstanceLock.h"
#include "platform/freedesktop/processes/PosixBackgroundProcesses.h"
#include "platform/freedesktop/processes/PosixChildProcesses.h"
#include "platform/freedesktop/session/LogindSession.h"
#include "platform/freedesktop/session/PackageKitUpdates.h"
#include "platform/x11/input/X11Permissions.h"
#include "platform/x11/screens/X11ScreenPower.h"
#include "platform/x11/screens/X11Screens.h"
#include "platform/x11/spaces/EwmhSpaceSwitching.h"
#include "platform/x11/spaces/X11SpaceServer.h"
#include "platform/x11/windows/X11WindowSystem.h"
#include "programs/orvellos/KeyboardServices.h"
#include "programs/orvellos/OverviewServices.h"
#include "programs/orvellos/UserInterfaceServices.h"
#include "ui/shell/QtRunLoop.h"
#include "ui/tags/QtLayerPainter.h"

namespace programs {

// The composition root of the application on X11: every service once, each before those that use it.
class X11Application final : public orvellos::AppDelegate::Root {
  public:
    // `scale` is the desktop's device pixels per point; `quit` ends the main loop.
    X11Application(platform::x11::XConnection& connection, ui::QtRunLoop& runLoop,
                   platform::freedesktop::SystemdLibrary& systemd, double scale, std::function<void()> quit);

    // Starts the application as soon as the Spaces are known, which on KWin takes a question to it, or when
    // that takes too long.
    void launch();
    // Ends it; nothing when it has not started.
    void terminate();
    platform::Subscription onServerGone(std::function<void()> action) {
        return events_.onBroken(std::move(action));
    }

  private:
    // What the user has stored, and the manager of their tags.
    struct Core {
        explicit Core(X11Application& application);

        platform::freedesktop::JsonDefaultsStore defaults;
        orvellos::Settings settings;
        orvellos::EditingContext editingContext;
        keyboard_shortcuts::Registry hotkeys;
        orvellos::TagStore store;
        orvellos::TagManager tagManager;
    };

    [[nodiscard]] orvellos::PrivacyPermissions::Services privacyServices();
    [[nodiscard]] orvellos::AppDelegate::Services delegateServices();
    void launchNow();
    [[nodiscard]] orvellos::AppDelegate::Core makeCore() override;
    void quit() override { quit_(); }

    ui::QtRunLoop& runLoop_;
    std::function<void()> quit_;
    platform::freedesktop::MessageBus bus_;
    platform::freedesktop::KwinDesktops kwinDesktops_;
    platform::Subscription kwinCall_;
    platform::freedesktop::PosixFileSystem files_;
    platform::freedesktop::XdgFolders folders_;
    platform::freedesktop::AutostartLoginItem loginItem_;
    platform::freedesktop::InstanceLock instanceLock_;
    platform::freedesktop::PosixBackgroundProcesses processes_;
    platform::freedesktop::SettingsPages settingsPages_;
    platform::freedesktop::FileManagerBrowser fileBrowser_;
    platform::freedesktop::OsRelease system_;
    platform::freedesktop::OpenCommand openCommand_;

    platform::x11::Atoms atoms_;
    platform::x11::XEvents events_;
    platform::x11::X11Screens screens_;
    platform::x11::X11SpaceServer spaceServer_;
    ui::QtLayerPainter painter_;
    ui::QtTextMeasurer textMeasurer_;
    platform::x11::X11WindowSystem windowSystem_;
    platform::x11::EwmhSpaceSwitching switching_;
    platform::x11::EwmhSpaceShortcuts shortcuts_;
    KeyboardServices keys_;
    platform::x11::X11Permissions permissions_;
    OverviewServices overview_;
    UserInterfaceServices interface_;
    platform::x11::X11ScreenPower screenPower_;
    platform::freedesktop::MessageBus systemBus_;
    platform::freedesktop::PackageKitUpdates updates_;
    platform::freedesktop::LogindSession login_;
    platform::freedesktop::SessionEvents session_;

    orvellos::SpaceIdentifier spaces_;
    orvellos::PrivacyPermissions privacy_;
    std::optional<Core> core_;
    orvellos::AppDelegate delegate_;
    platform::Subscription desktopsRenumbered_;
    platform::Subscription windowManagerChanged_;
    platform::Subscription overviewKindChanged_;
    platform::Subscription overviewMayOpenChanged_;
    platform::Subscription spacesKnown_;
    platform::Timer launchDeadline_;
};

}  // namespace programs
