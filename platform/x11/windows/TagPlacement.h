#pragma once

#include <optional>

#include "platform/Windows.h"
#include "platform/x11/windows/TagSurfaceContext.h"
#include "platform/x11/windows/TagSurfaceOwner.h"

namespace platform::x11 {

// Where a tag's window is on the root window, in pixels. A window manager that moves the window, as some do
// when a monitor goes, is asked for the wanted place again, some times; then its place is the window's frame.
class TagPlacement {
  public:
    TagPlacement(TagSurfaceContext& context, TagSurfaceOwner& owner, TagWindowDelegate& delegate,
                 xcb_window_t window, const Rect& frame);

    // The frame is wanted from now on, whatever the window manager has refused before.
    void setFrame(const Rect& frame);
    // The coordinates may have changed: the window manager is asked again from the start.
    void forgetInsistences() { insistences_ = 0; }
    // The place of the frame; for a parked window the pixel in its middle.
    [[nodiscard]] PixelRect wanted(bool isParked) const;
    [[nodiscard]] const PixelRect& current() const { return current_; }
    // Moves the window there, with hints that the place is meant.
    void moveTo(const PixelRect& place);
    void writeHints() const;
    // The window has been moved or resized by somebody.
    void verifyLater();

  private:
    void verify();

    TagSurfaceContext& context_;
    TagSurfaceOwner& owner_;
    TagWindowDelegate& delegate_;
    const xcb_window_t window_;
    Rect frame_;
    PixelRect current_;
    std::optional<PixelRect> refused_;  // the window manager's own place, taken as the frame
    int insistences_ = 0;               // on the wanted place
    Timer timer_;
};

}  // namespace platform::x11
