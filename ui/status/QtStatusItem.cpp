#include "ui/status/QtStatusItem.h"

#include <QCursor>
#include <QIcon>

#include "ui/shell/X11Window.h"
#include "ui/status/StatusIcon.h"

namespace ui {

namespace {

// A bar that is restarted is back within this time, and one that starts with the desktop is there by then.
constexpr auto kHostsSettlingTime = std::chrono::milliseconds(700);
// A tray that has not taken the icon in by then may never do so.
constexpr auto kDockingPatience = std::chrono::seconds(2);

QIcon notifierIcon(const platform::StatusTitle& title) {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48}) icon.addPixmap(statusIcon(title, std::nullopt, size, 1));
    return icon;
}

// Of a window inside another program's the toolkit does not know the place.
QRect atPointer() {
    return {QCursor::pos(), QSize(0, 0)};
}

}  // namespace

QtStatusItem::QtStatusItem(Services services)
    : services_(services),
      place_(services.screens),
      screensChanged_(services.screens.onParametersChanged([this] {
          if (button_) button_->settle();
      })) {}

void QtStatusItem::setMenu(std::function<std::vector<platform::MenuItem>()> menuNeedsUpdate) {
    menu_.emplace(services_.atoms, std::move(menuNeedsUpdate));
}

void QtStatusItem::setTitle(const platform::StatusTitle& title) {
    if (title_ == title) return;
    title_ = title;
    showTitle();
}

void QtStatusItem::rememberPlaceIn(platform::DefaultsStore& defaults) {
    place_.rememberIn(defaults);
    if (button_) button_->settle();
}

void QtStatusItem::setHosts(bool statusNotifier, std::optional<platform::WindowNumber> tray) {
    // What was in a tray ends with it, though the next one be there at once.
    if (statusNotifier || tray_ != tray) trayIcon_.reset();
    tray_ = tray;
    if (statusNotifier) return beNotifierItem();
    if (tray) return beInTray();
    buttonOffer_ = services_.runLoop.after(kHostsSettlingTime, [this] { beOnScreen(); });
}

void QtStatusItem::windowManagerChanged() {
    if (button_) mapAgain(*button_);
}

void QtStatusItem::beNotifierItem() {
    buttonOffer_.cancel();
    button_.reset();
    if (notifierItem_) return;
    notifierItem_ = std::make_unique<QSystemTrayIcon>();
    QObject::connect(notifierItem_.get(), &QSystemTrayIcon::activated, notifierItem_.get(),
                     [this](auto) { openMenu(atPointer()); });
    showTitle();
    notifierItem_->show();
}

void QtStatusItem::beInTray() {
    notifierItem_.reset();
    if (trayIcon_) return;
    trayIcon_ = std::make_unique<TrayIcon>(TrayIcon::Services{services_.runLoop, services_.tray}, *this);
    showTitle();
    trayHasChanged(false);
}

void QtStatusItem::trayHasChanged(bool isTaken) {
    if (isTaken) {
        buttonOffer_.cancel();
        button_.reset();
    } else {
        buttonOffer_ = services_.runLoop.after(kDockingPatience, [this] { beOnScreen(); });
    }
}

void QtStatusItem::trayMenuRequested() {
    openMenu(atPointer());
}

void QtStatusItem::beOnScreen() {
    notifierItem_.reset();
    if (button_) return;
    button_ =
        std::make_unique<StatusButton>(StatusButton::Services{services_.atoms, services_.screens, place_},
                                       [this] { openMenu(button_->geometry()); });
    showTitle();
    button_->show();
    button_->settle();
}

void QtStatusItem::showTitle() {
    if (notifierItem_) {
        notifierItem_->setIcon(notifierIcon(title_));
        notifierItem_->setToolTip(statusWords(title_));
    }
    if (trayIcon_) trayIcon_->setTitle(title_);
    if (button_) button_->setTitle(title_);
}

void QtStatusItem::openMenu(const QRect& item) {
    if (menu_) menu_->open(item);
}

}  // namespace ui
