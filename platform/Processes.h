#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Observers.h"

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

using ProcessId = std::int64_t;

// The applications that are running, known by bundle identifier and process.
class RunningApplications {
  public:
    virtual ~RunningApplications() = default;

    [[nodiscard]] virtual ProcessId currentProcess() const = 0;
    [[nodiscard]] virtual std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) = 0;
    // Takes the place of the application when it has terminated; false while it runs.
    [[nodiscard]] virtual bool takeOver(ProcessId application) = 0;
    // Asks the application to come to the front, and does not wait for it.
    virtual void activate(ProcessId application) = 0;
    // Calls `handler` at a later turn of the main loop whenever another one of this user's has asked this
    // application to come to the front.
    virtual Subscription onActivated(std::function<void()> handler) = 0;
};

// Starts applications of the desktop.
class ApplicationLauncher {
  public:
    virtual ~ApplicationLauncher() = default;

    // Where the application with this bundle identifier is; absent when there is none. The answer means
    // something to `open` only.
    [[nodiscard]] virtual std::optional<std::string> urlForApplication(
        std::string_view bundleIdentifier) const = 0;
    // Opens the application without activating it. `completion` is called once on the main queue, with a text
    // when it failed; never when the launcher is gone by then.
    virtual void open(const std::string& url,
                      std::function<void(const std::optional<std::string>& error)> completion) = 0;
};

}  // namespace platform
