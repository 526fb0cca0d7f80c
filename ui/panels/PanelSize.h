#pragma once

#include <QSize>

#include "platform/Panels.h"

class QScreen;
class QWidget;

namespace ui {

// How large a panel's window is. It grows with the system's font and with what its content needs, and never
// beyond the screen.
struct PanelSize {
    QSize usual;
    QSize least;
    bool cutsContent = false;  // so it has to be scrolled
};

// What a screen has room for, less the title bar. Null is a screen without bounds.
[[nodiscard]] QSize roomOn(const QScreen* screen);
[[nodiscard]] PanelSize panelSize(const platform::PanelShell& shell, const QWidget& content, QSize room);

}  // namespace ui
