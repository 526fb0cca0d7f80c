#include "ui/widgets/Appearance.h"

#include <QApplication>
#include <QStyleFactory>

#include "ui/widgets/Colors.h"
#include "ui/widgets/Style.h"

namespace ui {

namespace {

QPalette darkPalette() {
    const QColor window(38, 39, 43);
    const QColor base(28, 29, 32);
    const QColor text(236, 236, 240);
    const QColor faint(132, 133, 140);
    QPalette palette(text, QColor(58, 60, 66), QColor(84, 86, 94), QColor(20, 20, 22), QColor(48, 50, 55),
                     text, Qt::white, base, window);
    palette.setColor(QPalette::AlternateBase, QColor(33, 34, 38));
    palette.setColor(QPalette::Highlight, QColor(38, 106, 212));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(54, 56, 62));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Link, QColor(77, 163, 255));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

// Any base but this one may draw by its own colours.
void installStyle(bool hasOtherColors) {
    const auto* current = dynamic_cast<const Style*>(QApplication::style());
    if (current && (!hasOtherColors || current->baseStyle()->name() == QLatin1String("fusion"))) return;
    QApplication::setStyle(
        new Style(hasOtherColors ? QStyleFactory::create(QStringLiteral("Fusion")) : nullptr));
}

}  // namespace

QPalette readable(QPalette palette) {
    using Role = QPalette::ColorRole;
    const auto keep = [&](Role text, Role ground) {
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(
                group, text,
                legible(palette.color(group, ground), palette.color(group, text), kTextContrast));
    };
    keep(QPalette::Highlight, QPalette::HighlightedText);
    keep(QPalette::PlaceholderText, QPalette::Base);
    keep(QPalette::Link, QPalette::Base);
    return palette;
}

void applyColorScheme(ColorScheme scheme) {
    static const QPalette own = QApplication::palette();
    const bool wantsDark = scheme == ColorScheme::Dark;
    const bool isOwn = scheme == ColorScheme::Unknown || wantsDark == isDark(own);
    installStyle(!isOwn);
    QApplication::setPalette(readable(isOwn       ? own
                                      : wantsDark ? darkPalette()
                                                  : QApplication::style()->standardPalette()));
}

}  // namespace ui
