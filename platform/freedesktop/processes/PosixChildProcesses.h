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

// Runs programs from the path under which the application knows them. "/usr/bin/open" is played here: with
// "-n" and a program's path it starts that program, which lives on by itself, and ends at once.
class OpenCommand final : public ChildProcesses {
  public:
    [[nodiscard]] std::optional<int> run(const std::string& program,
                                         std::span<const std::string> arguments) override;

  private:
    PosixChildProcesses others_{[](const std::string& program) { return program; }};
};

}  // namespace platform::freedesktop
