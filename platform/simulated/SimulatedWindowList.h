#pragma once

#include <utility>
#include <vector>

#include "platform/WindowList.h"

namespace platform::simulated {

// A window list that says what a test has put there.
class SimulatedWindowList final : public WindowList {
  public:
    void set(std::optional<std::vector<WindowInfo>> windows) { windows_ = std::move(windows); }

    [[nodiscard]] std::optional<std::vector<WindowInfo>> copyWindowsExcludingDesktopElements()
        const override {
        return windows_;
    }

  private:
    std::optional<std::vector<WindowInfo>> windows_{std::in_place};
};

}  // namespace platform::simulated
