#pragma once

#include <functional>
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

// The same without waiting for their end.
class BackgroundProcesses {
  public:
    struct Ended {
        std::optional<int> status;  // absent when a signal ended it
        std::string standardError;
        std::string standardOutput = {};
    };

    virtual ~BackgroundProcesses() = default;

    // Starts the program and returns at once, with a text when it could not be started. `ended` is called on
    // the main queue when it has ended, unless this object is gone by then.
    [[nodiscard]] virtual std::optional<std::string> start(const std::string& program,
                                                           std::span<const std::string> arguments,
                                                           std::function<void(const Ended&)> ended) = 0;
};

}  // namespace platform
