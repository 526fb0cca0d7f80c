#include "ui/panels/QtToast.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <cmath>
#include <utility>

#include "ui/shell/X11Window.h"
#include "ui/tags/Blur.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"

namespace ui {

namespace {

constexpr int kWidest = 480;
constexpr QMargins kInset(16, 10, 16, 10);

// The shadow, in points: how far it is blurred, how far it lies below, and where nothing of it is left.
constexpr double kShadowSigma = 6.5;
constexpr int kShadowDrop = 4;
constexpr int kShadowMargin = 24;
constexpr double kShadowOpacity = 0.3;

QColor ground(const QPalette& palette) {
    const auto window = palette.color(QPalette::Window);
    return isDark(palette) ? window.lighter(135) : window.lighter(103);
}

QColor outline(const QPalette& palette) {
    auto stroke = labelColor(palette);
    stroke.setAlphaF(0.12F);
    return stroke;
}

QPainterPath rounded(const QRectF& capsule) {
    QPainterPath path;
    path.addRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
    return path;
}

// The whole pixels of a capsule of that size.
QRegion silhouette(const QSize& size) {
    const double radius = size.height() / 2.0;
    QRegion region;
    for (int y = 0; y < size.height(); ++y) {
        const int inset = qRound(radius - std::sqrt(radius * radius - std::pow(y + 0.5 - radius, 2)));
        region += QRect(inset, y, size.width() - 2 * inset, 1);
    }
    return region;
}

}  // namespace

QtToast::QtToast(const orvellos::UndoToastView& view, const platform::x11::Atoms& atoms) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_AlwaysShowToolTips);  // it is never the active window
    setWindowTitle(toQString(view.message));
    setWindowType(*this, atoms, platform::x11::Atom::NetWmWindowTypeNotification);
    auto* row = new QHBoxLayout(this);
    row->setSpacing(12);
    auto* message = new ElidedLabel(toQString(view.message));
    message->setFont(scaledFont(font_scale::kSecondary, QFont::Medium));
    row->addWidget(message);
    if (view.onUndo) row->addWidget(makeButton(view.onUndo));
    setComposited(false);
}

QToolButton* QtToast::makeButton(std::function<void()> undo) const {
    auto* button = new QToolButton;
    const auto text = toQString(orvellos::UndoToastView::kButton);
    button->setText(text);
    button->setAccessibleName(text);
    button->setFont(scaledFont(font_scale::kSecondary, QFont::DemiBold));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; color: %1; }"
                                         "QToolButton:hover { text-decoration: underline; }")
                              .arg(isDark(palette()) ? "#4DA3FF" : "#0060DF"));
    connect(button, &QToolButton::clicked, this, [undo = std::move(undo)] { undo(); });
    return button;
}

void QtToast::setComposited(bool isComposited) {
    margin_ = isComposited ? kShadowMargin : 0;
    layout()->setContentsMargins(kInset + QMargins(margin_, margin_, margin_, margin_));
    setMaximumWidth(scaled(kWidest) + 2 * margin_);
    adjustSize();
    cutOut();
    update();
}

QRect QtToast::capsule() const {
    return rect().adjusted(margin_, margin_, -margin_, -margin_);
}

void QtToast::resizeEvent(QResizeEvent* /*event*/) {
    cutOut();
}

// What lies under the shadow takes its clicks itself.
void QtToast::cutOut() {
    if (margin_ > 0)
        clearMask();
    else
        setMask(silhouette(size()));
    setInputArea(*this, capsule());
}

void QtToast::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (margin_ > 0) {
        paintShadow(painter);
        painter.setPen(QPen(outline(palette()), 0.5));
        painter.setBrush(ground(palette()));
        painter.drawPath(rounded(QRectF(capsule()).adjusted(0.25, 0.25, -0.25, -0.25)));
    } else {
        painter.fillRect(rect(), ground(palette()));
        painter.fillRect(rect(), outline(palette()));
        painter.fillPath(rounded(QRectF(rect()).adjusted(1, 1, -1, -1)), ground(palette()));
    }
}

void QtToast::paintShadow(QPainter& painter) const {
    const double ratio = devicePixelRatioF();
    QImage alpha(size() * ratio, QImage::Format_Alpha8);
    alpha.setDevicePixelRatio(ratio);
    alpha.fill(0);
    QPainter shape(&alpha);
    shape.setRenderHint(QPainter::Antialiasing);
    shape.fillPath(rounded(capsule().translated(0, kShadowDrop)), Qt::black);
    shape.end();
    blurAlpha(alpha, kShadowSigma * ratio);
    painter.setOpacity(kShadowOpacity);
    painter.drawImage(0, 0, alpha.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    painter.setOpacity(1);
}

}  // namespace ui
