#pragma once

#include "platform/Panels.h"

namespace desktop_test {

// For windows that nobody has to be brought to.
class NoWindowFocus final : public platform::WindowFocus {
  public:
    void activate(platform::WindowNumber /*window*/) const override {}
    void bringToUser(platform::WindowNumber /*window*/) const override {}
};

}  // namespace desktop_test
