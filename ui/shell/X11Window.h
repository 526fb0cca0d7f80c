#pragma once

#include <xcb/xcb.h>

#include <QWidget>

namespace ui {

// What windows have to tell a window manager or a compositor and the toolkit does not say for them.

// The toolkit's own connection to the X server; null on another platform, where the functions below do
// nothing.
[[nodiscard]] xcb_connection_t* toolkitConnection();

// Sets _NET_WM_WINDOW_TYPE (EWMH), before the window is shown: "DOCK", "NOTIFICATION", "POPUP_MENU".
void setWindowType(const QWidget& window, const char* type);
// Has a window that is shown from now on be on every desktop.
void putOnEveryDesktop(const QWidget& window);
// Has the mouse meet that part of the window alone, given in the toolkit's points; the rest is only seen.
void setInputArea(const QWidget& window, const QRect& area);
// Asks again for a shown window to be mapped. A window manager that ends leaves what it was asked undone.
void mapAgain(const QWidget& window);

}  // namespace ui
