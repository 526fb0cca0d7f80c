#pragma once

#include <QApplication>
#include <QIcon>

namespace ui {

// The icon of the application, and from the first call on that of its windows. Reading it takes some
// milliseconds, which the start does not wait for.
[[nodiscard]] inline QIcon applicationIcon() {
    if (QApplication::windowIcon().isNull())
        QApplication::setWindowIcon(QIcon(QStringLiteral(":/org.norvath.orvello.svg")));
    return QApplication::windowIcon();
}

}  // namespace ui
