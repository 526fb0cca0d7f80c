#include "ui/panels/QtActivation.h"

#include <QApplication>

#include "ui/panels/QtPanel.h"

namespace ui {

void QtActivation::activate() {
    if (QApplication::activeWindow()) return;
    for (const auto* widget : QApplication::topLevelWidgets()) {
        const auto* panel = dynamic_cast<const QtPanel*>(widget);
        if (panel && panel->isVisible()) return bringToUser_(panel->number());
    }
}

}  // namespace ui
