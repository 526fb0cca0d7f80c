#pragma once

#include <QObject>

#include "platform/x11/input/X11HotKeys.h"

namespace ui {

// Tells the hot keys of the keys that the toolkit's menus get while they hold the keyboard, and keeps those
// from a menu that are a hot key's. The keys that a row of the status menu shows are the menu's.
class MenuKeys final : public QObject {
  public:
    // The hot keys outlive this object.
    explicit MenuKeys(platform::x11::X11HotKeys& hotKeys);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    platform::x11::X11HotKeys& hotKeys_;
};

}  // namespace ui
