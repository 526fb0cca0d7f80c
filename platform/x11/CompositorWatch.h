#pragma once

#include <functional>

#include "platform/x11/XEvents.h"

namespace platform::x11 {

// Whether a compositor is running: the selection _NET_WM_CM_Sn has an owner (EWMH), which can change at any
// time.
class CompositorWatch {
  public:
    CompositorWatch(XConnection& connection, XEvents& events, std::function<void(bool composited)> changed);

    [[nodiscard]] bool isComposited() const { return composited_; }

  private:
    void handle(const xcb_generic_event_t& event);

    std::function<void(bool)> changed_;
    xcb_atom_t selection_ = 0;
    std::uint8_t xfixesEvents_ = 0;
    bool composited_ = false;
    Subscription subscription_;
};

}  // namespace platform::x11
