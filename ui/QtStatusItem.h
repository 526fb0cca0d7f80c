#pragma once

#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <optional>

#include "platform/RunLoop.h"
#include "platform/Screens.h"
#include "platform/StatusItem.h"
#include "platform/x11/SystemTray.h"
#include "ui/StatusButton.h"
#include "ui/StatusMenu.h"

namespace ui {

// The status item wherever the desktop has a place for it: as a StatusNotifierItem where a host shows such
// items, in the screen's tray where there is only that, and else as a button of its own at the top right of
// the main screen, so that the user is never locked out. It moves as those come and go.
class QtStatusItem final : public platform::StatusItem {
  public:
    // All outlive the item.
    QtStatusItem(platform::RunLoop& runLoop, const platform::x11::SystemTray& tray);
    ~QtStatusItem() override;

    void setTitle(const platform::StatusTitle& title) override;
    void setMenu(std::function<std::vector<platform::MenuItem>()> menuNeedsUpdate) override;

    // Where the item may be now; before the first call it is nowhere.
    void setHosts(bool statusNotifier, bool tray);
    // To be told of a window manager that has started.
    void windowManagerChanged();

  private:
    enum class Host { StatusNotifier, Tray, Screen };

    void moveTo(Host host);
    void leave();
    void showInTray();
    void finishDocking();
    void placeOnScreen();
    void followScreen();
    void openMenu(const QPoint& place);
    void showTitle();

    platform::RunLoop& runLoop_;
    const platform::x11::SystemTray& tray_;
    std::optional<StatusMenu> menu_;
    platform::StatusTitle title_;
    std::optional<Host> host_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::unique_ptr<StatusButton> button_;
    platform::Timer moving_;
    platform::Timer docking_;
    int dockingChecks_ = 0;
};

}  // namespace ui
