#include "ui/Switch.h"

#include <QPainter>

#include "ui/QtColor.h"

namespace ui {

void Switch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track((width() - 34) / 2.0, (height() - 20) / 2.0, 34, 20);
    auto off = labelColor(palette());
    off.setAlphaF(0.25F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? palette().color(QPalette::Active, QPalette::Highlight) : off);
    painter.drawRoundedRect(track, 10, 10);
    const bool knobIsRight = isChecked() != (layoutDirection() == Qt::RightToLeft);
    const double x = knobIsRight ? track.right() - 18 : track.left() + 2;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(x, track.top() + 2, 16, 16));
    if (!hasFocus()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(labelColor(palette()), 1, Qt::DotLine));
    painter.drawRoundedRect(track.adjusted(-1.5, -1.5, 1.5, 1.5), 11, 11);
}

}  // namespace ui
