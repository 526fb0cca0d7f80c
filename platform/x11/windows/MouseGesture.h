#pragma once

#include <optional>

#include "platform/Windows.h"
#include "platform/x11/windows/TagSurfaceContext.h"

namespace platform::x11 {

// Follows the first mouse button on a tag's window and tells the delegate: a press, the latest place of a
// drag once a turn of the main loop, and the release or the lack of one.
class MouseGesture {
  public:
    MouseGesture(TagSurfaceContext& context, TagWindowDelegate& delegate)
        : context_(context), delegate_(delegate) {}

    // A button press, a button release or a motion event of the window.
    void handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool isHeld() const { return isHeld_; }

  private:
    void deliverDrag();
    void watch();
    void end();

    TagSurfaceContext& context_;
    TagWindowDelegate& delegate_;
    bool isHeld_ = false;
    std::optional<MouseEvent> drag_;  // the last of a burst, not yet delivered
    Timer dragTimer_;
    Timer watchTimer_;
};

}  // namespace platform::x11
