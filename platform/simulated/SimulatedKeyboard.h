#pragma once

#include <functional>
#include <utility>

#include "platform/KeyMonitor.h"
#include "platform/Observers.h"

namespace platform::simulated {

// A keyboard whose keys a test presses.
class SimulatedKeyboard final : public KeyMonitor {
  public:
    Subscription addGlobalKeyDownMonitor(std::function<void(const KeyEvent&)> handler) override {
        return monitors_.subscribe(std::move(handler));
    }
    void press(std::uint16_t keyCode, std::uint64_t modifierFlags = 0) {
        monitors_.notify({keyCode, modifierFlags});
    }

  private:
    Observers<const KeyEvent&> monitors_;
};

}  // namespace platform::simulated
