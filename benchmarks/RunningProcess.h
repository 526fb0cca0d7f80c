#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/PrivateDesktop.h"

namespace benchmark {

// The system's figures of a running process.

// A number from a line of /proc/<pid>/status. Throws std::runtime_error when the process has ended.
[[nodiscard]] double statusNumber(pid_t process, std::string_view name);
[[nodiscard]] double residentMiB(pid_t process);
// The processor time that the process has used.
[[nodiscard]] std::chrono::nanoseconds processorTime(pid_t process);

// Counts some system calls of a process from now until `stop`.
class CallCounter {
  public:
    // `calls` by name, separated by commas. Throws std::runtime_error when the process cannot be traced.
    CallCounter(const desktop_test::PrivateDesktop& desktop, pid_t process, const std::string& calls);
    void stop() { tracer_.stop(); }
    // Only after `stop`.
    [[nodiscard]] int count(const std::string& call) const;

  private:
    std::filesystem::path log_;
    desktop_test::Process tracer_;
};

}  // namespace benchmark
