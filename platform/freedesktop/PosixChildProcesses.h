#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/ChildProcesses.h"

namespace platform::freedesktop {

// Starts programs with posix_spawn. A program is started from the file that `locate` gives for the path under
// which the application knows it, which may be the path itself.
class PosixChildProcesses final : public ChildProcesses {
  public:
    using Locate = std::function<std::string(const std::string& program)>;
    explicit PosixChildProcesses(Locate locate) : locate_(std::move(locate)) {}

    [[nodiscard]] std::optional<int> run(const std::string& program,
                                         std::span<const std::string> arguments) override;

  private:
    Locate locate_;
};

}  // namespace platform::freedesktop
