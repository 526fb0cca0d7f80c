#pragma once

#include <systemd/sd-bus.h>

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace desktop_test {

// A message bus of the test's own, with nothing on it and no service it could start.
class PrivateBus {
  public:
    PrivateBus();

    [[nodiscard]] const std::string& address() const { return address_; }
    // The daemon neither reads nor answers while it is stopped.
    void stop() const { daemon_.signal(SIGSTOP); }
    void resume() const { daemon_.signal(SIGCONT); }
    // Ends the daemon, or starts it anew at the same address.
    void end() { daemon_.stop(); }
    void restart();

  private:
    TemporaryFolder folder_;
    std::string address_;
    Process daemon_;
};

// A service on a bus that answers every method call in one way, from a thread of its own.
class StandInService {
  public:
    // Fills in the answer; a negative number sends an error instead.
    using Answer = std::function<int(sd_bus_message* call, sd_bus_message* reply)>;

    // Owns the name when this returns. Without `answer` no call is ever answered.
    StandInService(const std::string& address, const std::string& name, Answer answer);
    StandInService(const StandInService&) = delete;
    StandInService& operator=(const StandInService&) = delete;
    ~StandInService();

    // Runs `action` on the service's connection, and returns when it has, so that the service can send
    // signals.
    void run(const std::function<void(sd_bus* bus)>& action);

    // The calls so far: "path interface.member", oldest first.
    [[nodiscard]] std::vector<std::string> calls() const;

  private:
    static int handle(sd_bus_message* call, void* self, sd_bus_error* error);
    void serve(const std::stop_token& stopped);

    Answer answer_;
    sd_bus* bus_ = nullptr;
    mutable std::mutex lock_;
    std::mutex busLock_;
    std::vector<std::string> calls_;
    std::jthread thread_;
};

// An answer with these values, given as to sd_bus_message_append.
StandInService::Answer answerWith(auto... values) {
    return [=](auto*, auto* reply) { return sd_bus_message_append(reply, values...); };
}

}  // namespace desktop_test
