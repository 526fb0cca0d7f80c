#include "ui/shell/X11Window.h"

#include <xcb/shape.h>

#include <QGuiApplication>
#include <cstdint>

#include "platform/x11/spaces/EwmhDesktops.h"

namespace ui {

using platform::x11::Atom;
using platform::x11::Atoms;

namespace {

void setProperty(const QWidget& window, xcb_atom_t property, xcb_atom_t type, std::uint32_t value) {
    auto* connection = toolkitConnection();
    if (!connection) return;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        property, type, 32, 1, &value);
}

}  // namespace

xcb_connection_t* toolkitConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

void setWindowType(const QWidget& window, const Atoms& atoms, Atom type) {
    setProperty(window, atoms[Atom::NetWmWindowType], XCB_ATOM_ATOM, atoms[type]);
}

void putOnEveryDesktop(const QWidget& window, const Atoms& atoms) {
    setProperty(window, atoms[Atom::NetWmDesktop], XCB_ATOM_CARDINAL, platform::x11::kEveryDesktop);
}

void setInputArea(const QWidget& window, const QRect& area) {
    auto* connection = toolkitConnection();
    if (!connection) return;
    const double ratio = window.devicePixelRatioF();
    const auto pixels = QRectF(QPointF(area.topLeft()) * ratio, QSizeF(area.size()) * ratio).toAlignedRect();
    const xcb_rectangle_t rectangle = {
        static_cast<std::int16_t>(pixels.x()), static_cast<std::int16_t>(pixels.y()),
        static_cast<std::uint16_t>(pixels.width()), static_cast<std::uint16_t>(pixels.height())};
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window.winId()), 0, 0, 1, &rectangle);
}

void mapAgain(const QWidget& window) {
    auto* connection = toolkitConnection();
    if (!connection) return;
    xcb_map_window(connection, static_cast<xcb_window_t>(window.winId()));
    xcb_flush(connection);
}

}  // namespace ui
