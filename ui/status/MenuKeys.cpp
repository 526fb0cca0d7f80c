#include "ui/status/MenuKeys.h"

#include <QApplication>
#include <QKeyEvent>

#include "ui/status/StatusMenu.h"

namespace ui {

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
