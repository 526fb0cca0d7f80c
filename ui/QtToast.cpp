#include "ui/QtToast.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

#include "ui/ElidedLabel.h"
#include "ui/PlainText.h"
#include "ui/QtColor.h"
#include "ui/X11Window.h"

namespace ui {

namespace {

constexpr int kWidest = 480;

QFont toastFont(QFont font, QFont::Weight weight) {
    font.setPixelSize(12);
    font.setWeight(weight);
    return font;
}

QColor ground(const QPalette& palette) {
    const auto window = palette.color(QPalette::Window);
    return isDark(palette) ? window.lighter(135) : window.lighter(103);
}

}  // namespace

QtToast::QtToast(const orvellos::UndoToastView& view) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(toQString(view.message));
    setWindowType(*this, "NOTIFICATION");
    setMaximumWidth(kWidest);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 10, 16, 10);
    row->setSpacing(12);
    auto* message = new ElidedLabel(toQString(view.message));
    message->setFont(toastFont(font(), QFont::Medium));
    row->addWidget(message);
    auto* button = new QToolButton;
    const auto text = toQString(orvellos::UndoToastView::kButton);
    button->setText(text);
    button->setAccessibleName(text);
    button->setFont(toastFont(font(), QFont::DemiBold));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; color: %1; }"
                                         "QToolButton:hover { text-decoration: underline; }")
                              .arg(isDark(palette()) ? "#4DA3FF" : "#0060DF"));
    connect(button, &QToolButton::clicked, this, [undo = view.onUndo] { undo(); });
    row->addWidget(button);
}

void QtToast::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto capsule = QRectF(rect()).adjusted(0.25, 0.25, -0.25, -0.25);
    auto stroke = labelColor(palette());
    stroke.setAlphaF(0.12F);
    painter.setPen(QPen(stroke, 0.5));
    painter.setBrush(ground(palette()));
    painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
}

// Without a compositor nothing is seen through the corners.
void QtToast::resizeEvent(QResizeEvent* /*event*/) {
    QPainterPath capsule;
    capsule.addRoundedRect(QRectF(rect()), height() / 2.0, height() / 2.0);
    setMask(QRegion(capsule.toFillPolygon().toPolygon()));
}

}  // namespace ui
