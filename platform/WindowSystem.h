#pragma once

#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Identifiers.h"
#include "platform/Layers.h"

namespace platform {

// A mouse event on a window; `location` is in screen coordinates.
struct MouseEvent {
    Point location;
    bool shiftHeld = false;
};

// What a tag window's owner is told, on the main thread.
class TagWindowDelegate {
  public:
    virtual ~TagWindowDelegate() = default;

    virtual void mouseDown(const MouseEvent& event) = 0;
    virtual void mouseDragged(const MouseEvent& event) = 0;
    virtual void mouseUp(const MouseEvent& event) = 0;
    // The gesture ended unseen, as when the window went off the screen under the pointer.
    virtual void mouseCancelled() = 0;
    // The desktop wants the window at `proposed`; the answer is where the window goes.
    virtual Rect constrainFrame(const Rect& proposed) = 0;
};

struct WindowState {
    bool visible = false;        // ordered in
    bool onActiveSpace = false;  // its Space is the current one
    bool unobscured = false;     // some of it can be seen
};

// A borderless, transparent, floating window on one Space. It never takes the focus and is in no task list.
class TagSurface {
  public:
    virtual ~TagSurface() = default;

    [[nodiscard]] virtual WindowNumber number() const = 0;
    [[nodiscard]] virtual WindowState state() const = 0;
    // Moves and sizes the window.
    virtual void setFrame(const Rect& frame) = 0;
    // 0…1. At 0 the window neither paints nor takes a click, but stays on its Space.
    virtual void setAlpha(double alpha) = 0;
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    // What is drawn, and (tint layer) which part takes clicks and shows the open-hand cursor. `title` is what
    // assistive programs say.
    virtual void setContents(const TagLayers& layers, const std::string& title) = 0;
    // Scales the drawing around the window's centre; 1 is the natural size.
    virtual void setContentScale(double scale) = 0;
    // In front of the other windows without activating the application, or off the screen. Takes effect at
    // the end of this turn of the main loop, after a Space asked for in the same turn.
    virtual void setOrderedIn(bool orderedIn) = 0;
};

// Makes tag windows.
class WindowSystem {
  public:
    virtual ~WindowSystem() = default;

    // `delegate` outlives the surface. The surface is made at `frame`, alpha 1, ordered out. `acceptsMouse`
    // is false for a window that never takes clicks. Never null.
    virtual std::unique_ptr<TagSurface> makeTagSurface(const Rect& frame, bool acceptsMouse,
                                                       TagWindowDelegate& delegate) = 0;
    // Whether a tag window lets the clicks beside its tint layer's outline through by itself. Otherwise
    // whoever owns it has to follow the pointer and have it ignore the mouse there.
    [[nodiscard]] virtual bool takesClicksOnOutlineOnly() const = 0;
};

}  // namespace platform
