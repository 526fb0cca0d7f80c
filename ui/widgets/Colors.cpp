#include "ui/widgets/Colors.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "orvellos/tags/TagColor.h"
#include "ui/widgets/Labels.h"

namespace ui {

namespace {

double luminance(const QColor& color) {
    return orvellos::relativeLuminance(toColor(color));
}

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto part = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor over(const QColor& ground, const QColor& color) {
    return mixed(ground, color, color.alphaF());
}

QColor legible(const QColor& ground, const QColor& color, double atLeast) {
    const auto seen = over(ground, color);
    const bool isLighter = luminance(seen) > luminance(ground);
    const QColor nearer = isLighter ? Qt::white : Qt::black;
    const QColor end = contrast(nearer, ground) >= atLeast ? nearer : isLighter ? Qt::black : Qt::white;
    constexpr int kSteps = 64;
    for (int i = 0; i < kSteps; ++i) {
        const auto tried = mixed(seen, end, static_cast<double>(i) / kSteps);
        if (contrast(tried, ground) >= atLeast) return tried;
    }
    return end;
}

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
