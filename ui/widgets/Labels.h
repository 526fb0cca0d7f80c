#pragma once

#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QString>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>
#include <string_view>

#include "orvellos/tags/Labels.h"

namespace ui {

[[nodiscard]] inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
// Texts of the user's, kept from being read as markup where the toolkit would.
[[nodiscard]] inline QString menuText(std::string_view text) {
    return toQString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}
// A long one is wrapped.
[[nodiscard]] inline QString toolTipText(std::string_view text) {
    constexpr qsizetype kOneLine = 90;
    auto plain = toQString(text);
    const bool isLong = plain.size() > kOneLine;
    if (!isLong && !Qt::mightBeRichText(plain)) return plain;
    return QStringLiteral("<p style='white-space:%1'>%2</p>")
        .arg(QLatin1String(isLong ? "pre-wrap" : "pre"), plain.toHtmlEscaped());
}
// Of a text that is shown cut off: as much of it as can be read at a glance.
[[nodiscard]] inline QString cutOffToolTip(const QString& text) {
    constexpr std::size_t kAtAGlance = 300;  // characters
    return toolTipText(orvellos::shortLabel(text.toStdString(), kAtAGlance));
}
// Explains a widget in a tooltip, and to a screen reader, which would read the tooltip's markup aloud.
inline void setHelp(QWidget& widget, std::string_view text) {
    widget.setToolTip(toolTipText(text));
    widget.setAccessibleDescription(toQString(text));
}

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
