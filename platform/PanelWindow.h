#pragma once

#include <functional>
#include <string>

#include "platform/Geometry.h"
#include "platform/Identifiers.h"

namespace platform {

// What a panel's window is like.
struct PanelShell {
    std::string title;
    Size contentSize;  // points; a height of 0 is the content's own
    bool isResizable = false;
    bool isMovableByBackground = false;
    bool operator==(const PanelShell&) const = default;
};

// A titled window with a close button, over other programs' windows, which the Escape key closes too. It is
// made off the screen.
class PanelWindow {
  public:
    virtual ~PanelWindow() = default;

    [[nodiscard]] virtual WindowNumber number() const = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    // Shows the panel where the user is, on the current Space and, the first time, in the middle of the
    // screen with the pointer, in front of the other windows and with the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
    virtual void close() = 0;
};

// An undecorated note on every Space that never takes the keyboard. It is on the screen from
// orderFrontRegardless until it is destroyed.
class ToastWindow {
  public:
    virtual ~ToastWindow() = default;

    [[nodiscard]] virtual WindowNumber number() const = 0;
    // The size that its content takes, in points.
    [[nodiscard]] virtual Size fittingSize() const = 0;
    virtual void setFrameOrigin(Point origin) = 0;
    virtual void orderFrontRegardless() = 0;
};

}  // namespace platform
