#pragma once

#include <functional>

#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// Tells when the window manager takes or gives back the keyboard on the root window, which KWin does when one
// of its overviews opens, when it closes, and when one of its shortcuts is pressed. Other programs hold the
// keyboard too, so it is a hint and no more.
class OverviewHints {
  public:
    OverviewHints(XEvents& events, std::function<void()> overviewMayHaveChanged);

  private:
    Subscription subscription_;
};

}  // namespace platform::x11
