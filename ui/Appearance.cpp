#include "ui/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include "ui/QtColor.h"

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

}  // namespace

void applyColorScheme(ColorScheme scheme) {
    static const QPalette own = QApplication::palette();
    const bool wantsDark = scheme == ColorScheme::Dark;
    if (scheme == ColorScheme::Unknown || wantsDark == isDark(own)) return QApplication::setPalette(own);
    // Any style but this one may draw by its own colours.
    if (QApplication::style()->name() != QLatin1String("fusion"))
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(wantsDark ? darkPalette() : QApplication::style()->standardPalette());
}

}  // namespace ui
