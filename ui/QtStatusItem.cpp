#include "ui/QtStatusItem.h"

#include <QApplication>
#include <QCursor>
#include <QPalette>
#include <QScreen>

#include "ui/PlainText.h"
#include "ui/QtColor.h"
#include "ui/StatusIcon.h"
#include "ui/X11Window.h"

namespace ui {

namespace {

// A bar that is restarted is back within this time, and one that starts with the desktop is there by then.
constexpr auto kHostsSettle = std::chrono::milliseconds(700);
constexpr auto kDockingCheck = std::chrono::milliseconds(50);
constexpr int kChecksBeforeAskingAgain = 20;
constexpr int kFromEdge = 6;
constexpr QPoint kOffScreen(-200, -200);

platform::WindowNumber windowOf(const QWidget& widget) {
    return {static_cast<std::int64_t>(widget.winId())};
}

QIcon trayIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48}) icon.addPixmap(statusIconForAnyGround(size, 1));
    return icon;
}

}  // namespace

QtStatusItem::QtStatusItem(platform::RunLoop& runLoop, const platform::x11::SystemTray& tray)
    : runLoop_(runLoop), tray_(tray) {}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::setMenu(std::function<std::vector<platform::MenuItem>()> menuNeedsUpdate) {
    menu_.emplace(std::move(menuNeedsUpdate));
}

void QtStatusItem::setTitle(const platform::StatusTitle& title) {
    title_ = title;
    showTitle();
}

void QtStatusItem::setHosts(bool statusNotifier, bool tray) {
    const auto host = statusNotifier ? Host::StatusNotifier : tray ? Host::Tray : Host::Screen;
    if (host != Host::Screen) return moveTo(host);
    moving_ = runLoop_.after(kHostsSettle, [this] { moveTo(Host::Screen); });
}

void QtStatusItem::windowManagerChanged() {
    if (host_ == Host::Screen) mapAgain(*button_);
}

void QtStatusItem::moveTo(Host host) {
    moving_.cancel();
    if (host_ == host) return;
    leave();
    host_ = host;
    if (host == Host::StatusNotifier) {
        icon_ = std::make_unique<QSystemTrayIcon>(trayIcon());
        QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                         [this](auto) { openMenu(QCursor::pos()); });
        icon_->show();
    } else {
        const auto place = host == Host::Tray ? StatusButton::Place::Tray : StatusButton::Place::Screen;
        button_ = std::make_unique<StatusButton>(place, [this] {
            // Of a window inside another program's the toolkit does not know the place.
            openMenu(host_ == Host::Screen ? button_->geometry().bottomLeft() + QPoint(0, 1)
                                           : QCursor::pos());
        });
    }
    showTitle();
    if (host == Host::Tray) showInTray();
    if (host == Host::Screen) {
        button_->show();
        auto* application = qGuiApp;
        QObject::connect(application, &QGuiApplication::primaryScreenChanged, button_.get(),
                         [this] { followScreen(); });
        followScreen();
    }
}

void QtStatusItem::leave() {
    docking_.cancel();
    icon_.reset();
    // A press of the button may be what makes it leave.
    if (button_) button_.release()->deleteLater();
}

void QtStatusItem::showInTray() {
    // Shown where nobody sees it until the tray takes it in: one that is shown later closes an open menu.
    button_->setGeometry(QRect(kOffScreen, button_->sizeHint()));
    button_->show();
    if (auto* connection = toolkitConnection()) xcb_flush(connection);  // the tray has to find the window
    tray_.dock(windowOf(*button_));
    docking_ = runLoop_.every(kDockingCheck, platform::Duration::zero(), [this] { finishDocking(); });
}

void QtStatusItem::finishDocking() {
    const auto window = windowOf(*button_);
    if (!tray_.hasTaken(window)) {
        // A tray that has just started may have overlooked it.
        if (++dockingChecks_ % kChecksBeforeAskingAgain == 0) tray_.dock(window);
        return;
    }
    docking_.cancel();
    const auto color = tray_.colorBeside(window);
    button_->setGround(color ? std::optional(toQColor(*color)) : std::nullopt);
}

void QtStatusItem::showTitle() {
    const auto words = titleText(title_);
    if (icon_) {
        const auto name = QStringLiteral("orvellos");
        icon_->setToolTip(words.isEmpty() ? name : name + QStringLiteral(" — ") + words.toHtmlEscaped());
    }
    if (!button_) return;
    button_->setTitle(title_);
    if (host_ == Host::Screen) placeOnScreen();
}

void QtStatusItem::placeOnScreen() {
    const auto* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const auto area = screen->availableGeometry();
    const auto size = button_->sizeHint();
    button_->setGeometry(area.right() + 1 - kFromEdge - size.width(), area.top() + kFromEdge, size.width(),
                         size.height());
}

void QtStatusItem::followScreen() {
    if (const auto* screen = QGuiApplication::primaryScreen())
        QObject::connect(screen, &QScreen::availableGeometryChanged, button_.get(),
                         [this] { placeOnScreen(); });
    placeOnScreen();
}

void QtStatusItem::openMenu(const QPoint& place) {
    if (menu_) menu_->open(place);
}

}  // namespace ui
