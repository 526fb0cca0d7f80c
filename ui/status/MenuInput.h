#pragma once

#include <xcb/xcb.h>
#include <QObject>

#include "platform/x11/input/X11HotKeys.h"
#include "platform/x11/input/X11MouseMonitor.h"
#include "ui/shell/X11Window.h"

namespace ui {

// Knows which presses of a mouse button the toolkit's menus have taken, even those that closed them.
class MenuClicks final : public QObject, public platform::x11::ToolkitMouse {
  public:
    MenuClicks();
    [[nodiscard]] xcb_connection_t* connection() const override { return toolkitConnection(); }
    [[nodiscard]] bool isMenuClick(xcb_timestamp_t time) const override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    xcb_timestamp_t lastTaken_ = XCB_CURRENT_TIME;
};

// Tells the hot keys of the keys that the toolkit's menus get while they hold the keyboard, and keeps those
// from a menu that are a hot key's. The keys that a row of the status menu shows are the menu's.
class MenuKeys final : public QObject {
  public:
    explicit MenuKeys(platform::x11::X11HotKeys& hotKeys);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    platform::x11::X11HotKeys& hotKeys_;
};

}  // namespace ui
