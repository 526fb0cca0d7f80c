#include "tests/support/PlainWindow.h"

#include <unistd.h>

#include <array>

namespace desktop_test {

PlainWindow::PlainWindow(const std::string& display, const PlainWindowOptions& options)
    : client_(display), window_(xcb_generate_id(client_.connection())) {
    const auto& [x, y, width, height] = options.frame;
    const std::array<std::uint32_t, 2> values{
        options.color, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_EXPOSURE};
    xcb_create_window(client_.connection(), XCB_COPY_FROM_PARENT, window_, client_.root(),
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
    announce(options);
    xcb_map_window(client_.connection(), window_);
    client_.synchronize();
}

void PlainWindow::announce(const PlainWindowOptions& options) {
    const auto setText = [&](xcb_atom_t property, xcb_atom_t type, const std::string& text) {
        xcb_change_property(client_.connection(), XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    };
    setText(client_.atom("_NET_WM_NAME"), client_.atom("UTF8_STRING"), options.title);
    setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, options.title);
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string("plain\0Plain\0", 12));
    const xcb_atom_t type = client_.atom(options.type);
    xcb_change_property(client_.connection(), XCB_PROP_MODE_REPLACE, window_,
                        client_.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &type);
    const std::array pid{static_cast<std::uint32_t>(::getpid())};
    client_.setCardinals(window_, "_NET_WM_PID", pid);
    if (options.desktop) {
        client_.setCardinals(window_, "_NET_WM_DESKTOP", std::array{*options.desktop});
        // KWin follows a new window that wants the focus to its desktop.
        client_.setCardinals(window_, "_NET_WM_USER_TIME", std::array{0U});
    }
    // ICCCM WM_NORMAL_HINTS: USPosition, so that the window stays where it was asked for.
    std::array<std::uint32_t, 18> sizeHints{1};
    xcb_change_property(client_.connection(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, sizeHints.size(), sizeHints.data());
}

void PlainWindow::setFullScreen(bool isFullScreen) {
    const std::array<std::uint32_t, 4> data{isFullScreen ? 1U : 0U, client_.atom("_NET_WM_STATE_FULLSCREEN"),
                                            0, 1};
    client_.sendToRoot(window_, "_NET_WM_STATE", data);
    client_.synchronize();
}

void PlainWindow::readEvents() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(client_.connection())}) {
        const auto type = typeOf(*event);
        if (type == XCB_BUTTON_PRESS) {
            const auto* press = reinterpret_cast<const xcb_button_press_event_t*>(event.get());
            buttonPresses_.push_back({press->detail, press->root_x, press->root_y});
        } else if (type == XCB_KEY_PRESS) {
            keyPresses_.push_back(reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail);
        }
    }
}

const std::vector<ButtonPress>& PlainWindow::buttonPresses() {
    readEvents();
    return buttonPresses_;
}

const std::vector<xcb_keycode_t>& PlainWindow::keyPresses() {
    readEvents();
    return keyPresses_;
}

}  // namespace desktop_test
