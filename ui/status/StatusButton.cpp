#include "ui/status/StatusButton.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/shell/ToolkitPlaces.h"
#include "ui/shell/X11Window.h"
#include "ui/status/StatusIcon.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Symbols.h"

namespace ui {

namespace {

constexpr int kIcon = 18;
constexpr int kHeight = 26;
constexpr int kPadding = 8;
constexpr int kSpace = 5;
constexpr int kSymbol = 12;
constexpr int kDot = 10;
constexpr int kWidestLabel = 200;

}  // namespace

StatusButton::StatusButton(Services services, std::function<void()> menuRequested)
    : services_(services), menuRequested_(std::move(menuRequested)) {
    describeStatusItem(*this, {});
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setWindowType(*this, services_.atoms, platform::x11::Atom::NetWmWindowTypeDock);
    putOnEveryDesktop(*this, services_.atoms);
}

void StatusButton::setTitle(const platform::StatusTitle& title) {
    title_ = title;
    describeStatusItem(*this, title);
    update();
    settle();
}

void StatusButton::settle() {
    if (isDragged_) return;
    const auto size = sizeHint();
    const auto frame =
        services_.place.frame({static_cast<double>(size.width()), static_cast<double>(size.height())});
    if (frame) setGeometry({toToolkit({frame->minX(), frame->maxY()}, services_.screens), size});
}

QFont StatusButton::titleFont() const {
    return scaledFont(font_scale::kSecondary, QFont::DemiBold);
}

QSize StatusButton::sizeHint() const {
    int width = kPadding + kIcon + kPadding;
    if (title_.hasHiddenSymbol) width += kSpace + kSymbol;
    if (title_.label) {
        const int label = QFontMetrics(titleFont()).horizontalAdvance(toQString(title_.label->text));
        width += kSpace + kDot + kSpace + std::min(label, kWidestLabel);
    }
    return {width, scaled(kHeight)};
}

void StatusButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(tertiaryLabelColor(palette()));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    painter.drawPixmap(QPointF(kPadding, (height() - kIcon) / 2.0),
                       statusIcon(labelColor(palette()), kIcon, devicePixelRatioF()));
    paintTitle(painter);
}

void StatusButton::paintTitle(QPainter& painter) const {
    const auto ratio = devicePixelRatioF();
    const auto color = labelColor(palette());
    double x = kPadding + kIcon;
    if (title_.hasHiddenSymbol) {
        x += kSpace;
        painter.drawPixmap(QPointF(x, (height() - kSymbol) / 2.0),
                           symbolPixmap("eye.slash", color, kSymbol, ratio));
        x += kSymbol;
    }
    if (!title_.label) return;
    x += kSpace;
    painter.drawPixmap(QPointF(x, (height() - kDot) / 2.0),
                       dotOnGround(toQColor(title_.label->dot), windowColor(palette()), kDot, ratio));
    x += kDot + kSpace;
    painter.setFont(titleFont());
    painter.setPen(color);
    const QFontMetrics metrics(titleFont());
    painter.drawText(QRectF(x, 0, width() - x, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(toQString(title_.label->text), Qt::ElideRight, kWidestLabel));
}

void StatusButton::mousePressEvent(QMouseEvent* event) {
    pressedAt_ = event->globalPosition().toPoint();
    heldAt_ = event->position().toPoint();
}

void StatusButton::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) return;
    const auto pointer = event->globalPosition().toPoint();
    if (!isDragged_ && (pointer - pressedAt_).manhattanLength() < QApplication::startDragDistance()) return;
    isDragged_ = true;
    setCursor(Qt::ClosedHandCursor);
    move(pointer - heldAt_);
}

void StatusButton::mouseReleaseEvent(QMouseEvent* event) {
    // The window manager may still be telling of places on the way there.
    if (isDragged_) return drop(event->globalPosition().toPoint() - heldAt_);
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) menuRequested_();
}

void StatusButton::drop(const QPoint& place) {
    isDragged_ = false;
    unsetCursor();
    const auto corner = fromToolkit(place, services_.screens);
    const auto size = QSizeF(this->size());
    services_.place.put({corner.x, corner.y - size.height(), size.width(), size.height()});
    settle();
}

}  // namespace ui
