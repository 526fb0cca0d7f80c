#pragma once

namespace platform::x11 {

// A tag's surface as its parts (pixels, placement, desktop) see it.
class TagSurfaceOwner {
  public:
    // Sends what has changed at the end of this turn of the main loop.
    virtual void commitLater() = 0;
    // Whether the window is on the screen, or would be if its desktop were shown.
    [[nodiscard]] virtual bool isMapped() const = 0;
    // Whether the window should be where it was last put: it is mapped and seen, the user does not hold it,
    // and no change waits to be sent.
    [[nodiscard]] virtual bool isAtRest() const = 0;

  protected:
    ~TagSurfaceOwner() = default;
};

}  // namespace platform::x11
