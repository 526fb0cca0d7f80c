#include "ui/status/MenuClicks.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace ui {

MenuClicks::MenuClicks() {
    qApp->installEventFilter(this);
}

bool MenuClicks::hasTaken(xcb_timestamp_t time) const {
    return QApplication::activePopupWidget() || (time != XCB_CURRENT_TIME && time == lastTaken_);
}

// A menu gets its events through its window, which comes before it decides to close.
bool MenuClicks::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && QApplication::activePopupWidget())
        lastTaken_ = static_cast<xcb_timestamp_t>(static_cast<QMouseEvent*>(event)->timestamp());
    return QObject::eventFilter(object, event);
}

}  // namespace ui
