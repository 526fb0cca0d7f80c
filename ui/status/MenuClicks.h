#pragma once

#include <xcb/xcb.h>

#include <QObject>

namespace ui {

// Knows which presses of a mouse button the toolkit's menus have taken, even those that closed them.
class MenuClicks final : public QObject {
  public:
    MenuClicks();
    // Whether a menu has the mouse, or has had it when a button went down at this server time.
    [[nodiscard]] bool hasTaken(xcb_timestamp_t time) const;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    xcb_timestamp_t lastTaken_ = XCB_CURRENT_TIME;
};

}  // namespace ui
