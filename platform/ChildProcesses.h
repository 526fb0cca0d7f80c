#pragma once

#include <optional>
#include <span>
#include <string>

namespace platform {

// Programs the application starts, named by the path it knows them under.
class ChildProcesses {
  public:
    virtual ~ChildProcesses() = default;

    // Runs the program with this process's standard streams, waits for its end and gives its exit status;
    // absent when it could not be started or ended by a signal.
    [[nodiscard]] virtual std::optional<int> run(const std::string& program,
                                                 std::span<const std::string> arguments) = 0;
};

}  // namespace platform
