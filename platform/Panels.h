#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Observers.h"
#include "platform/Windows.h"

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

// The left and right mouse buttons that go down, without taking them from anybody. What the user does in a
// menu of the application is not told. Handlers run on the main thread; a subscription is inactive where
// buttons cannot be seen.
class MouseMonitor {
  public:
    virtual ~MouseMonitor() = default;

    // In the application's own windows.
    virtual Subscription addLocalMouseDownMonitor(std::function<void(WindowNumber window)> handler) = 0;
    // In those of other programs and of the desktop.
    virtual Subscription addGlobalMouseDownMonitor(std::function<void()> handler) = 0;
};

// Brings windows of the application that are on the screen to the user.
class WindowFocus {
  public:
    virtual ~WindowFocus() = default;
    // To the front, with the keyboard.
    virtual void activate(WindowNumber window) const = 0;
    // The same, on the current Space.
    virtual void bringToUser(WindowNumber window) const = 0;
};

// How much of a place the application has among those that the user works with.
enum class ActivationPolicy { Regular, Accessory };

class ApplicationActivation {
  public:
    virtual ~ApplicationActivation() = default;
    [[nodiscard]] virtual ActivationPolicy policy() const = 0;
    virtual void setPolicy(ActivationPolicy policy) = 0;
    // Brings the application's windows to the front, with the keyboard.
    virtual void activate() = 0;
};

// Something that the user has to answer.
struct Alert {
    enum class Style { Warning, Informational };

    std::string message;
    std::string informativeText;
    std::vector<std::string> buttons;  // the first is the default one
    Style style = Style::Warning;
    bool operator==(const Alert&) const = default;
};

class Alerts {
  public:
    virtual ~Alerts() = default;

    // Shows the alert before everything else of the application and returns at once. `answered` is called on
    // the main queue with the index of the button that was chosen; one that is closed counts as its last
    // button. Several alerts are shown one after the other.
    virtual void runModal(const Alert& alert, std::function<void(std::size_t button)> answered) = 0;
};

}  // namespace platform
