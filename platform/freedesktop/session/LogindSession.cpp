#include "platform/freedesktop/session/LogindSession.h"

#include <unistd.h>
#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kService = "org.freedesktop.login1";
constexpr const char* kManagerPath = "/org/freedesktop/login1";
constexpr const char* kManager = "org.freedesktop.login1.Manager";
constexpr const char* kSession = "org.freedesktop.login1.Session";
// The caller's session or, for a process outside of any, the one that its user sees.
constexpr const char* kSessionOfUser = "/org/freedesktop/login1/session/auto";

BusCall managerCall(const char* member, BusArgument argument) {
    return {.service = kService,
            .path = kManagerPath,
            .interface = kManager,
            .member = member,
            .arguments = {std::move(argument)},
            .timeout = kLongestPatientCall};
}

std::optional<std::string> onlyText(const std::optional<BusArguments>& arguments) {
    if (!arguments || arguments->size() != 1 || !arguments->front().is_string()) return std::nullopt;
    return arguments->front().get<std::string>();
}

}  // namespace

LogindSession::LogindSession(MessageBus& systemBus, std::optional<std::string> sessionId)
    : bus_(systemBus),
      sessionId_(std::move(sessionId)),
      sleepSignals_(systemBus.subscribe(
          {.sender = kService, .path = kManagerPath, .interface = kManager, .member = "PrepareForSleep"},
          [this](const auto& arguments) {
              if (arguments.size() == 1 && arguments.front().is_boolean()) setAsleep(arguments.front());
          })),
      service_(systemBus, kService, [this](bool isRunning) { handleServiceChanged(isRunning); }) {}

std::optional<bool> LogindSession::isOnConsole() const {
    if (!active_ || !active_->value().is_boolean()) return std::nullopt;
    return active_->value().get<bool>();
}

// A logind that ends does not say any more that the machine is awake again.
void LogindSession::handleServiceChanged(bool isRunning) {
    question_.cancel();
    if (!isRunning)
        setAsleep(false);
    else if (!active_)
        findSession();
}

void LogindSession::findSession() {
    std::vector<BusCall> ways = {managerCall("GetSessionByPID", static_cast<std::uint32_t>(::getpid()))};
    if (sessionId_) ways.push_back(managerCall("GetSession", *sessionId_));
    findSession(std::move(ways));
}

// Tries each in turn.
void LogindSession::findSession(std::vector<BusCall> ways) {
    if (ways.empty()) return findSessionOfUser();
    const auto way = ways.front();
    ways.erase(ways.begin());
    question_ = bus_.call(way, [this, ways = std::move(ways)](const auto& answer) {
        if (const auto path = onlyText(answer))
            follow(*path);
        else
            findSession(ways);
    });
}

// Changes are announced under the session's own path alone, so that has to be found.
void LogindSession::findSessionOfUser() {
    auto idRead = propertyRead(kService, kSessionOfUser, kSession, "Id");
    idRead.timeout = kLongestPatientCall;
    question_ = bus_.call(idRead, [this](const auto& id) {
        if (!onlyText(id)) return;
        question_ = bus_.call(managerCall("GetSession", *onlyText(id)), [this](const auto& answer) {
            if (const auto path = onlyText(answer)) follow(*path);
        });
    });
}

void LogindSession::follow(const std::string& path) {
    active_.emplace(bus_, BusPropertyName{kService, path, kSession, "Active"}, [this] { updateActive(); });
}

void LogindSession::updateActive() {
    const bool isActive = isOnConsole().value_or(true);
    if (std::exchange(isActive_, isActive) == isActive) return;
    events_.notify(isActive ? SessionEvent::SessionDidBecomeActive : SessionEvent::SessionDidResignActive);
}

void LogindSession::setAsleep(bool isAsleep) {
    if (std::exchange(isAsleep_, isAsleep) == isAsleep) return;
    events_.notify(isAsleep ? SessionEvent::WillSleep : SessionEvent::DidWake);
}

}  // namespace platform::freedesktop
