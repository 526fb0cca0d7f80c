#pragma once

#include <cstdint>
#include <optional>

#include "platform/Spaces.h"
#include "platform/x11/windows/TagSurfaceContext.h"
#include "platform/x11/windows/TagSurfaceOwner.h"

namespace platform::x11 {

// The one desktop that a tag's window belongs to (EWMH _NET_WM_DESKTOP). A window that is put on all of them,
// as KWin does with a part of the desktop whose own it has overlooked, asks for its own again. Where that is
// refused time after time the window is seen everywhere.
class TagDesktop {
  public:
    TagDesktop(TagSurfaceContext& context, TagSurfaceOwner& owner, xcb_window_t window)
        : context_(context), owner_(owner), window_(window) {}

    // The desktop by the window's property; absent before it has one, and while the property may be older
    // than the numbers of the desktops.
    [[nodiscard]] std::optional<std::uint32_t> get() const { return number_.get(); }
    // Asks for a desktop: by the property while the window is withdrawn, of the window manager afterwards.
    void moveTo(std::uint32_t desktop);
    // The desktops have other numbers now; the window's property is as it was.
    void outdate() { number_.outdate(); }
    // Writes the property of a window that is about to be mapped.
    void write() const;
    // The property has changed.
    void read();

  private:
    void ask(std::uint32_t desktop) const;
    void follow(std::uint32_t told);

    TagSurfaceContext& context_;
    TagSurfaceOwner& owner_;
    const xcb_window_t window_;
    SpaceNumber<std::uint32_t> number_;
    int returns_ = 0;  // from all desktops to its own, one soon after the other
    Instant lastReturn_{};
    Timer timer_;
};

}  // namespace platform::x11
