#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

using ProcessId = std::int64_t;

// The applications that are running, known by bundle identifier and process.
class RunningApplications {
  public:
    virtual ~RunningApplications() = default;

    [[nodiscard]] virtual ProcessId currentProcess() const = 0;
    [[nodiscard]] virtual std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) const = 0;
    [[nodiscard]] virtual bool hasTerminated(ProcessId application) const = 0;
    // Asks the application to come to the front.
    virtual void activate(ProcessId application) = 0;
};

}  // namespace platform
