#include "ui/status/MenuInput.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include "ui/status/StatusMenu.h"

namespace ui {

MenuClicks::MenuClicks() {
    qApp->installEventFilter(this);
}

bool MenuClicks::isMenuClick(xcb_timestamp_t time) const {
    return QApplication::activePopupWidget() || (time != XCB_CURRENT_TIME && time == lastTaken_);
}

// A menu gets its events through its window, which comes before it decides to close.
bool MenuClicks::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && QApplication::activePopupWidget())
        lastTaken_ = static_cast<xcb_timestamp_t>(static_cast<QMouseEvent*>(event)->timestamp());
    return QObject::eventFilter(object, event);
}

MenuKeys::MenuKeys(platform::x11::X11HotKeys& hotKeys) : hotKeys_(hotKeys) {
    qApp->installEventFilter(this);
}

// A menu gets its events through its window, which comes before it does anything about them.
bool MenuKeys::eventFilter(QObject* object, QEvent* event) {
    auto* popup = QApplication::activePopupWidget();
    if (event->type() != QEvent::KeyPress || !popup || !object->isWindowType())
        return QObject::eventFilter(object, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const auto* menu = dynamic_cast<const StatusMenu*>(popup);
    return hotKeys_.pressInMenu({.key = static_cast<xcb_keycode_t>(key.nativeScanCode()),
                                 .state = static_cast<std::uint16_t>(key.nativeModifiers()),
                                 .time = static_cast<xcb_timestamp_t>(key.timestamp()),
                                 .isUsed = menu && menu->uses(key)});
}

}  // namespace ui
