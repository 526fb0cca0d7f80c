#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/Subscription.h"

namespace platform {

using ProcessId = std::int64_t;

// The applications that are running, known by bundle identifier and process.
class RunningApplications {
  public:
    virtual ~RunningApplications() = default;

    [[nodiscard]] virtual ProcessId currentProcess() const = 0;
    [[nodiscard]] virtual std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) const = 0;
    [[nodiscard]] virtual bool hasTerminated(ProcessId application) const = 0;
    // Asks the application to come to the front, and does not wait for it.
    virtual void activate(ProcessId application) = 0;
    // Calls `handler` at a later turn of the main loop whenever another one of this user's has asked this
    // application to come to the front.
    virtual Subscription onActivated(std::function<void()> handler) = 0;
};

}  // namespace platform
