#pragma once

#include <xcb/xcb.h>

#include <QWidget>

#include "platform/x11/connection/Atoms.h"

namespace ui {

// What windows have to tell a window manager or a compositor and the toolkit does not say for them.

// The toolkit's own connection to the X server; null on another platform, where the functions below do
// nothing.
[[nodiscard]] xcb_connection_t* toolkitConnection();

// Sets _NET_WM_WINDOW_TYPE (EWMH), before the window is shown. The atoms are those of our own connection.
void setWindowType(const QWidget& window, const platform::x11::Atoms& atoms, platform::x11::Atom type);
// Has a window that is shown from now on be on every desktop.
void putOnEveryDesktop(const QWidget& window, const platform::x11::Atoms& atoms);
// Has the mouse meet that part of the window alone, given in the toolkit's points; the rest is only seen.
void setInputArea(const QWidget& window, const QRect& area);
// Asks again for a shown window to be mapped. A window manager that ends leaves what it was asked undone.
void mapAgain(const QWidget& window);

}  // namespace ui
