#pragma once

#include <QApplication>
#include <QIcon>
#include <QLabel>

namespace ui {

// The icon of the application, and from the first call on that of its windows. Reading it takes some
// milliseconds, which the start does not wait for.
[[nodiscard]] inline QIcon applicationIcon() {
    if (QApplication::windowIcon().isNull())
        QApplication::setWindowIcon(QIcon(QStringLiteral(":/org.norvath.orvello.svg")));
    return QApplication::windowIcon();
}

// The icon in a square of so many points.
[[nodiscard]] inline QLabel* makeApplicationIcon(int points) {
    auto* icon = new QLabel;
    icon->setPixmap(applicationIcon().pixmap(QSize(points, points), icon->devicePixelRatioF()));
    return icon;
}

}  // namespace ui
