#pragma once

#include <QString>
#include <QTextDocument>
#include <string_view>

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

}  // namespace ui
