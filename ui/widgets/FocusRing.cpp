#include "ui/widgets/FocusRing.h"

#include <algorithm>

namespace ui {

void drawFocusRing(QPainter& painter, const QRectF& outline, double corner, const QPalette& palette) {
    const auto draw = [&](double inset, double width, const QColor& color) {
        const double middle = inset + width / 2;
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(outline.adjusted(middle, middle, -middle, -middle),
                                std::max(0.0, corner - middle), std::max(0.0, corner - middle));
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    draw(0, kFocusRing, focusRingColor(palette));
    draw(kFocusRing, kFocusGap, windowColor(palette));
    painter.restore();
}

}  // namespace ui
