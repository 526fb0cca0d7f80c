#pragma once

#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QToolTip>

#include "ui/widgets/PlainText.h"

namespace ui {

// One line of plain text that takes what room there is and ends in "…" where that is not enough. Then a
// tooltip has all of it, or what of it can be read at a glance.
class ElidedLabel final : public QLabel {
  public:
    explicit ElidedLabel(const QString& text) : QLabel(text) {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics(font());
        return {metrics.horizontalAdvance(text().left(kMeasured)) + 1, metrics.height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {20, QFontMetrics(font()).height()}; }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.drawText(rect(), Qt::AlignVCenter | Qt::TextSingleLine, elided());
    }
    // A tooltip that is always there would be read aloud after the name, which is the same.
    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QLabel::event(event);
        const auto place = static_cast<QHelpEvent*>(event)->globalPos();
        QToolTip::showText(place, elided() == text() ? QString() : cutOffToolTip(text()), this);
        return true;
    }

  private:
    static constexpr int kMeasured = 400;  // characters; no panel is that wide

    [[nodiscard]] QString elided() const {
        return QFontMetrics(font()).elidedText(text(), Qt::ElideRight, width());
    }
};

}  // namespace ui
