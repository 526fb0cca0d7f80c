#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Observers.h"
#include "platform/Session.h"

namespace platform::freedesktop {

// The events of several sources as those of one monitor: the one that knows the session, and others, such as
// the screens' power, that tell of events alone.
class SessionEvents final : public SessionMonitor {
  public:
    using Source = std::function<Subscription(std::function<void(SessionEvent)> action)>;

    // `session` outlives this object.
    SessionEvents(SessionMonitor& session, std::initializer_list<Source> others) : session_(session) {
        const auto notify = [this](SessionEvent event) { events_.notify(event); };
        sources_.push_back(session.onEvent(notify));
        for (const auto& source : others) sources_.push_back(source(notify));
    }
    SessionEvents(const SessionEvents&) = delete;
    SessionEvents& operator=(const SessionEvents&) = delete;

    Subscription onEvent(std::function<void(SessionEvent)> action) override {
        return events_.subscribe(std::move(action));
    }
    [[nodiscard]] std::optional<bool> isOnConsole() const override { return session_.isOnConsole(); }

  private:
    const SessionMonitor& session_;
    Observers<SessionEvent> events_;
    std::vector<Subscription> sources_;
};

}  // namespace platform::freedesktop
