#pragma once

#include <optional>

#include "platform/Session.h"

namespace platform::simulated {

// A login item that counts how often it is switched, and fails when it is told to.
class SimulatedLoginItem final : public LoginItem {
  public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    [[nodiscard]] MaybeError enable() override { return switchTo(true); }
    [[nodiscard]] MaybeError disable() override { return switchTo(false); }

    bool enabled = false;
    int switches = 0;
    MaybeError failure;

  private:
    MaybeError switchTo(bool wanted) {
        ++switches;
        if (!failure) enabled = wanted;
        return failure;
    }
};

}  // namespace platform::simulated
