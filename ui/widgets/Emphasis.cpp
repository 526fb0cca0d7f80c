#include "ui/widgets/Emphasis.h"

#include <QRegularExpression>

#include "ui/widgets/PlainText.h"

namespace ui {

namespace {

QString replaced(QString text, const QString& bold, const QString& fixed) {
    static const QRegularExpression betweenAsterisks(QStringLiteral("\\*\\*(.+?)\\*\\*"));
    static const QRegularExpression betweenBackticks(QStringLiteral("`(.+?)`"));
    return text.replace(betweenAsterisks, bold).replace(betweenBackticks, fixed);
}

}  // namespace

QString emphasized(std::string_view text) {
    return replaced(toQString(text).toHtmlEscaped(), QStringLiteral("<b>\\1</b>"),
                    QStringLiteral("<code>\\1</code>"));
}

QString withoutEmphasis(std::string_view text) {
    return replaced(toQString(text), QStringLiteral("\\1"), QStringLiteral("\\1"));
}

}  // namespace ui
