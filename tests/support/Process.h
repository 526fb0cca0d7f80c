#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/freedesktop/files/FileDescriptor.h"
#include "tests/support/Wait.h"

namespace desktop_test {

using Environment = std::map<std::string, std::string>;

// A child process in a process group of its own, with nothing on its standard input. It ends, group and all,
// with this object, and with the test's process even when that is killed.
class Process {
  public:
    // Starts command[0], found through this process's PATH, with exactly this environment. A program that
    // cannot be started exits with 127. Throws std::runtime_error when there can be no child at all.
    Process(const std::vector<std::string>& command, const Environment& environment);
    Process(Process&& other) noexcept;
    Process& operator=(Process&& other) noexcept;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() { stop(); }

    [[nodiscard]] pid_t pid() const { return pid_; }
    // Its output so far.
    [[nodiscard]] std::string standardOutput() const;
    [[nodiscard]] std::string standardError() const;

    [[nodiscard]] bool isRunning();
    // The exit status, 128 + the signal that ended it, or absent when it still runs at the deadline.
    std::optional<int> wait(std::chrono::milliseconds deadline = kGenerousDeadline);
    // Sends a signal to this process alone.
    void signal(int number) const;
    // Asks the whole group to end, kills the rest of it after a while, and waits for its end.
    void stop();

  private:
    [[nodiscard]] bool hasEnded(std::chrono::milliseconds deadline) const;
    void reap();

    platform::freedesktop::FileDescriptor output_;
    platform::freedesktop::FileDescriptor error_;
    pid_t pid_ = -1;
    platform::freedesktop::FileDescriptor handle_;
    bool reaped_ = false;
    int exitStatus_ = 0;
};

// How a command ended: `status` as Process::wait gives it.
struct CommandResult {
    std::optional<int> status;
    std::string standardOutput;
    std::string standardError;
};

// Runs a command to its end. A late command is stopped and has no status.
[[nodiscard]] CommandResult runCommand(const std::vector<std::string>& command,
                                       const Environment& environment,
                                       std::chrono::milliseconds deadline = kGenerousDeadline);

// The processes of this user whose environment contains the text, wherever in the process tree they are.
[[nodiscard]] std::vector<pid_t> processesWithEnvironment(const std::string& text);

}  // namespace desktop_test
