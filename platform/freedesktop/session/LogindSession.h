#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Observers.h"
#include "platform/Session.h"
#include "platform/freedesktop/bus/BusService.h"
#include "platform/freedesktop/bus/MessageBus.h"

namespace platform::freedesktop {

// The login session and the machine's sleep as logind knows them (org.freedesktop.login1). It knows nothing
// of the screens' power. Without logind the session counts as the one at the screens, and nothing sleeps.
class LogindSession final : public SessionMonitor {
  public:
    // `sessionId` is XDG_SESSION_ID, for a process that does not belong to the session's own processes.
    LogindSession(MessageBus& systemBus, std::optional<std::string> sessionId);

    Subscription onEvent(std::function<void(SessionEvent)> action) override {
        return events_.subscribe(std::move(action));
    }
    [[nodiscard]] std::optional<bool> isOnConsole() const override;

  private:
    void handleServiceChanged(bool isRunning);
    void findSession();
    void findSession(std::vector<BusCall> ways);
    void findSessionOfUser();
    void follow(const std::string& path);
    void updateActive();
    void setAsleep(bool isAsleep);

    MessageBus& bus_;
    std::optional<std::string> sessionId_;
    bool isActive_ = true;
    bool isAsleep_ = false;
    Observers<SessionEvent> events_;
    Subscription question_;
    std::optional<BusProperty> active_;
    Subscription sleepSignals_;
    BusServiceWatch service_;
};

// The events of several sources as those of one monitor: the one that knows the session, and others, such as
// the screens' power, that tell of events alone.
class SessionEvents final : public SessionMonitor {
  public:
    using Source = std::function<Subscription(std::function<void(SessionEvent)> action)>;

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
