#include "ui/widgets/Switch.h"

#include <QPainter>

#include "ui/widgets/Colors.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Style.h"

namespace ui {

namespace {

constexpr int kWidth = 34;
constexpr int kHeight = 20;
constexpr double kAroundKnob = 2;

}  // namespace

QSize Switch::sizeHint() const {
    constexpr int kRoom = 2 * static_cast<int>(kFocusRoom);
    return {scaled(kWidth) + kRoom, scaled(kHeight) + kRoom};
}

void Switch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto track = QRectF(rect()).adjusted(kFocusRoom, kFocusRoom, -kFocusRoom, -kFocusRoom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? accentShapeColor(palette()) : outlineColor(palette()));
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    const bool knobIsRight = isChecked() != (layoutDirection() == Qt::RightToLeft);
    const double side = track.height() - 2 * kAroundKnob;
    const double x = knobIsRight ? track.right() - kAroundKnob - side : track.left() + kAroundKnob;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(x, track.top() + kAroundKnob, side, side));
    if (hasFocus()) drawFocusRing(painter, rect(), height() / 2.0, palette());
}

}  // namespace ui
