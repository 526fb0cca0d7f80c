#include "ui/status/TrayIcon.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/shell/X11Window.h"
#include "ui/status/StatusIcon.h"
#include "ui/widgets/Colors.h"

namespace ui {

namespace {

// A tray that has just started may overlook an icon. It is asked again, ever more seldom.
constexpr auto kFirstPatience = std::chrono::seconds(1);
constexpr auto kLongestPatience = std::chrono::minutes(1);
// A tray needs a while to put the icon in its place and to draw the ground beside it, which is looked at
// again after ever longer pauses.
constexpr auto kShortestPause = std::chrono::milliseconds(200);
constexpr auto kLongestPause = std::chrono::seconds(2);
constexpr int kSize = 22;
constexpr int kLargest = 36;

platform::WindowNumber windowOf(const QWidget& widget) {
    return {static_cast<std::int64_t>(widget.winId())};
}

}  // namespace

TrayIcon::TrayIcon(Services services, Owner& owner)
    : services_(services), owner_(owner), patience_(kFirstPatience) {
    describeStatusItem(*this, {});
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_TranslucentBackground, services.tray.wantsAlpha());
    // An icon that bypasses the window manager would bypass the tray's sockets as well.
    setWindowFlags(Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    resize(sizeHint());
    setMinimumSize(sizeHint());  // some trays give an icon no more than it asks for
    winId();
    if (auto* connection = toolkitConnection()) xcb_flush(connection);  // the tray has to find the window
    dock();
}

void TrayIcon::setTitle(const platform::StatusTitle& title) {
    title_ = title;
    describeStatusItem(*this, title);
    update();
}

QSize TrayIcon::sizeHint() const {
    return {kSize, kSize};
}

void TrayIcon::dock() {
    docking_ = services_.tray.dock(windowOf(*this), [this](bool isTaken) { hasMoved(isTaken); });
    askingAgain_ = services_.runLoop.after(patience_, [this] { dock(); });
    patience_ = std::min<platform::Duration>(2 * patience_, kLongestPatience);
}

void TrayIcon::hasMoved(bool isTaken) {
    looking_.cancel();
    setVisible(isTaken);
    if (isTaken) {
        askingAgain_.cancel();
        lookAtGround(kShortestPause);
    } else {
        askingAgain_ = services_.runLoop.after(patience_, [this] { dock(); });
    }
    owner_.trayHasChanged(isTaken);
}

void TrayIcon::lookAtGround(platform::Duration pause) {
    if (const auto color = services_.tray.colorBeside(windowOf(*this))) ground_ = toQColor(*color);
    update();
    if (pause > kLongestPause) return;
    looking_ = services_.runLoop.after(pause, [this, pause] { lookAtGround(2 * pause); });
}

void TrayIcon::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (ground_) painter.fillRect(rect(), *ground_);
    const bool isOpaque = !testAttribute(Qt::WA_TranslucentBackground);
    const auto ground = isOpaque && !ground_ ? std::optional(palette().color(QPalette::Window)) : ground_;
    const double size = std::min({width(), height(), kLargest});
    painter.drawPixmap(QPointF((width() - size) / 2, (height() - size) / 2),
                       statusIcon(title_, ground, size, devicePixelRatioF()));
}

void TrayIcon::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) owner_.trayMenuRequested();
}

}  // namespace ui
