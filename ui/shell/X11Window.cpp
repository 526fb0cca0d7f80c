#include "ui/shell/X11Window.h"

#include <xcb/shape.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string>

namespace ui {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t atom(xcb_connection_t* connection, const std::string& name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void setProperty(const QWidget& window, const char* property, xcb_atom_t type, std::uint32_t value) {
    auto* connection = toolkitConnection();
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom(connection, property), type, 32, 1, &value);
}

}  // namespace

xcb_connection_t* toolkitConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

void setWindowType(const QWidget& window, const char* type) {
    if (auto* connection = toolkitConnection())
        setProperty(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                    atom(connection, std::string("_NET_WM_WINDOW_TYPE_") + type));
}

void putOnEveryDesktop(const QWidget& window) {
    if (toolkitConnection()) setProperty(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, 0xFFFFFFFF);
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
