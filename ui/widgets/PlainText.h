#pragma once

#include <QString>
#include <QTextDocument>
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

}  // namespace ui
