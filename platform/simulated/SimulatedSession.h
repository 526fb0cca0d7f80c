#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/Observers.h"
#include "platform/Session.h"

namespace platform::simulated {

// A login session whose events a test sends.
class SimulatedSession final : public SessionMonitor {
  public:
    std::optional<bool> onConsole = true;

    Subscription onEvent(std::function<void(SessionEvent)> action) override {
        return events_.subscribe(std::move(action));
    }
    [[nodiscard]] std::optional<bool> isOnConsole() const override { return onConsole; }
    void send(SessionEvent event) { events_.notify(event); }

  private:
    Observers<SessionEvent> events_;
};

}  // namespace platform::simulated
