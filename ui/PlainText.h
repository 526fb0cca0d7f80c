#pragma once

#include <QString>
#include <string_view>

namespace ui {

[[nodiscard]] inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
// Texts of the user's, kept from being read as markup where the toolkit would.
[[nodiscard]] inline QString menuText(std::string_view text) {
    return toQString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}
[[nodiscard]] inline QString toolTipText(std::string_view text) {
    if (text.empty()) return {};
    constexpr std::size_t kOneLine = 90;  // longer ones are wrapped
    return QStringLiteral("<p style='white-space:%1'>%2</p>")
        .arg(QLatin1String(text.size() < kOneLine ? "pre" : "pre-wrap"), toQString(text).toHtmlEscaped());
}

}  // namespace ui
