#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/Picture.h"
#include "tests/support/XClient.h"

namespace desktop_test {

struct PlainWindowOptions {
    std::string title = "Plain window";
    Rectangle frame{200, 150, 400, 300};
    Rgb color = 0x336699;
    // Where it stays, without asking for the focus; without it, on the current desktop.
    std::optional<std::uint32_t> desktop = std::nullopt;
    std::string type = "_NET_WM_WINDOW_TYPE_NORMAL";
};

// A mouse button pressed on a window; root coordinates.
struct ButtonPress {
    int button = 0;
    int x = 0;
    int y = 0;
    bool operator==(const ButtonPress&) const = default;
};

// Another program's ordinary window, of one colour, on a connection of its own. It records the button presses
// and keys that reach it, and is gone with this object. A window manager may take a moment to let go of it:
// make the next one when it has left the client list, since the server gives its number out again.
class PlainWindow {
  public:
    explicit PlainWindow(const std::string& display, const PlainWindowOptions& options = {});

    [[nodiscard]] xcb_window_t id() const { return window_; }
    // As a program does at its user's F11.
    void setFullScreen(bool isFullScreen);
    // Everything since it was made.
    [[nodiscard]] const std::vector<ButtonPress>& buttonPresses();
    [[nodiscard]] const std::vector<xcb_keycode_t>& keyPresses();

  private:
    void announce(const PlainWindowOptions& options);
    void readEvents();

    XClient client_;
    xcb_window_t window_;
    std::vector<ButtonPress> buttonPresses_;
    std::vector<xcb_keycode_t> keyPresses_;
};

}  // namespace desktop_test
