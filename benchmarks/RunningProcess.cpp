#include "benchmarks/RunningProcess.h"

#include <fmt/format.h>

#include <fstream>
#include <stdexcept>

#include "tests/support/Wait.h"

namespace benchmark {

double statusNumber(pid_t process, std::string_view name) {
    std::ifstream status(fmt::format("/proc/{}/status", process));
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::stod(line.substr(name.size() + 1));
    throw std::runtime_error("the application has ended");
}

double residentMiB(pid_t process) {
    constexpr double kMiB = 1024;  // in KiB
    return statusNumber(process, "VmRSS:") / kMiB;
}

std::chrono::nanoseconds processorTime(pid_t process) {
    std::ifstream statistics(fmt::format("/proc/{}/schedstat", process));
    long long nanoseconds = 0;
    statistics >> nanoseconds;
    return std::chrono::nanoseconds(nanoseconds);
}

CallCounter::CallCounter(const desktop_test::PrivateDesktop& desktop, pid_t process, const std::string& calls)
    : log_(desktop.folder() / "calls"),
      tracer_(desktop.start(
          {"strace", "-f", "-e", "trace=" + calls, "-o", log_.string(), "-p", std::to_string(process)})) {
    if (!desktop_test::waitUntil([&] { return statusNumber(process, "TracerPid:") != 0; }))
        throw std::runtime_error("strace does not show the application's calls");
}

int CallCounter::count(const std::string& call) const {
    std::ifstream calls(log_);
    int count = 0;
    for (std::string line; std::getline(calls, line);) count += line.find(call + "(") != std::string::npos;
    return count;
}

}  // namespace benchmark
