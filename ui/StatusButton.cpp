#include "ui/StatusButton.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "orvellos/StatusItemController.h"
#include "ui/PlainText.h"
#include "ui/QtColor.h"
#include "ui/StatusIcon.h"
#include "ui/Symbols.h"
#include "ui/X11Window.h"

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

QString titleText(const platform::StatusTitle& title) {
    QStringList parts;
    if (title.label) parts << toQString(title.label->text);
    if (title.hasHiddenSymbol) parts << toQString(orvellos::StatusItemController::kHiddenDescription);
    return parts.join(QStringLiteral(" — "));
}

StatusButton::StatusButton(Place place, std::function<void()> menuRequested)
    : place_(place), menuRequested_(std::move(menuRequested)) {
    const auto name = toQString(orvellos::StatusItemController::kAccessibilityDescription);
    setWindowTitle(name);
    setAccessibleName(name);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_TranslucentBackground, place == Place::Tray);
    Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;
    if (place == Place::Tray) flags |= Qt::X11BypassWindowManagerHint;
    setWindowFlags(flags);
    if (place == Place::Tray) return;
    setWindowType(*this, "DOCK");
    putOnEveryDesktop(*this);
}

void StatusButton::setTitle(const platform::StatusTitle& title) {
    title_ = title;
    setToolTip(toolTipText(titleText(title).toStdString()));
    setAccessibleDescription(titleText(title));
    updateGeometry();
    update();
}

void StatusButton::setGround(const std::optional<QColor>& ground) {
    ground_ = ground;
    update();
}

QFont StatusButton::titleFont() const {
    auto titled = font();
    titled.setPixelSize(12);
    titled.setWeight(QFont::DemiBold);
    return titled;
}

QSize StatusButton::sizeHint() const {
    if (place_ == Place::Tray) return {22, 22};
    int width = kPadding + kIcon + kPadding;
    if (title_.hasHiddenSymbol) width += kSpace + kSymbol;
    if (title_.label) {
        const int label = QFontMetrics(titleFont()).horizontalAdvance(toQString(title_.label->text));
        width += kSpace + kDot + kSpace + std::min(label, kWidestLabel);
    }
    return {width, kHeight};
}

void StatusButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto ratio = devicePixelRatioF();
    if (place_ == Place::Screen) {
        painter.fillRect(rect(), palette().color(QPalette::Window));
        painter.setPen(tertiaryLabelColor(palette()));
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.drawPixmap(QPointF(kPadding, (height() - kIcon) / 2.0),
                           statusIcon(labelColor(palette()), kIcon, ratio));
        return paintTitle(painter);
    }
    if (ground_) painter.fillRect(rect(), *ground_);
    const double size = std::min({width(), height(), 2 * kIcon});
    const bool dark = ground_ && ground_->lightnessF() < 0.5F;
    painter.drawPixmap(QPointF((width() - size) / 2, (height() - size) / 2),
                       ground_ ? statusIcon(dark ? Qt::white : QColor(38, 38, 42), size, ratio)
                               : statusIconForAnyGround(size, ratio));
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
                       dotPixmap(toQColor(title_.label->dot), kDot, kDot, ratio));
    x += kDot + kSpace;
    painter.setFont(titleFont());
    painter.setPen(color);
    const QFontMetrics metrics(titleFont());
    painter.drawText(QRectF(x, 0, width() - x, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(toQString(title_.label->text), Qt::ElideRight, kWidestLabel));
}

void StatusButton::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) menuRequested_();
}

}  // namespace ui
