#pragma once

#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Menus.h"
#include "platform/RunLoop.h"
#include "platform/Screens.h"
#include "platform/x11/tray/SystemTray.h"
#include "ui/status/StatusButton.h"
#include "ui/status/StatusButtonPlace.h"
#include "ui/status/StatusMenu.h"
#include "ui/status/TrayIcon.h"

namespace ui {

// The status item wherever the desktop has a place for it: as a StatusNotifierItem where a host shows such
// items, in the screen's tray where there is only that, and else, or while a tray does not take it in, as a
// button of its own on the screen, so that the user is never locked out. It moves as those come and go.
class QtStatusItem final : public platform::StatusItem, public TrayIcon::Owner {
  public:
    struct Services {
        platform::RunLoop& runLoop;
        const platform::x11::Atoms& atoms;
        platform::x11::SystemTray& tray;
        platform::Screens& screens;
    };
    explicit QtStatusItem(Services services);

    void setTitle(const platform::StatusTitle& title) override;
    void setMenu(std::function<std::vector<platform::MenuItem>()> menuNeedsUpdate) override;

    // Keeps the place of the button on the screen in this store from now on.
    void rememberPlaceIn(platform::DefaultsStore& defaults);
    // Where the item may be now, the tray by its owner; before the first call it is nowhere.
    void setHosts(bool statusNotifier, std::optional<platform::WindowNumber> tray);
    // To be called when a window manager has started.
    void windowManagerChanged();

  private:
    void beNotifierItem();
    void beInTray();
    void beOnScreen();
    void trayHasChanged(bool isTaken) override;
    void trayMenuRequested() override;
    void openMenu(const QRect& item);
    void showTitle();

    Services services_;
    std::optional<StatusMenu> menu_;
    platform::StatusTitle title_;
    StatusButtonPlace place_;
    std::optional<platform::WindowNumber> tray_;  // the one that the icon is made for
    std::unique_ptr<QSystemTrayIcon> notifierItem_;
    std::unique_ptr<TrayIcon> trayIcon_;
    std::unique_ptr<StatusButton> button_;
    platform::Timer buttonOffer_;
    platform::Subscription screensChanged_;
};

}  // namespace ui
