#pragma once

#include <string>
#include <utility>

#include "platform/Processes.h"
#include "platform/freedesktop/processes/Spawn.h"

namespace platform::freedesktop {

// Starts programs with posix_spawn, as `locate` finds them.
class PosixChildProcesses final : public ChildProcesses {
  public:
    explicit PosixChildProcesses(LocateProgram locate) : locate_(std::move(locate)) {}

    [[nodiscard]] std::optional<int> run(const std::string& program,
                                         std::span<const std::string> arguments) override;

  private:
    LocateProgram locate_;
};

}  // namespace platform::freedesktop
