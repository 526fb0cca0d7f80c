#pragma once

#include <QPainter>
#include <QWidget>

namespace ui {

// One line of plain text that takes what room there is and ends in "…" where that is not enough.
class ElidedLabel final : public QWidget {
  public:
    explicit ElidedLabel(QString text) : text_(std::move(text)) {
        setAccessibleName(text_);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics(font());
        return {metrics.horizontalAdvance(text_.left(kMeasured)) + 1, metrics.height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {20, QFontMetrics(font()).height()}; }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const QFontMetrics metrics(font());
        painter.drawText(rect(), Qt::AlignVCenter | Qt::TextSingleLine,
                         metrics.elidedText(text_, Qt::ElideRight, width()));
    }

  private:
    static constexpr int kMeasured = 400;  // characters; no panel is that wide

    QString text_;
};

}  // namespace ui
