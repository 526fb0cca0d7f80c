#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/Row.h"
#include "tests/support/Process.h"

namespace benchmark {

using Milliseconds = std::chrono::duration<double, std::milli>;
// Makes a measured run and gives its duration.
using Timed = std::function<Milliseconds()>;

// Of at least one value.
[[nodiscard]] double median(std::vector<double> values);

struct Comparison {
    Milliseconds ours{};
    Milliseconds theirs{};
    double ratio = 0;  // the median of the ratios, pair by pair
};

// Runs the two in turn, A B A B, after a few runs that do not count. Speed drifts on a shared machine; the
// ratio of neighbours does not. Medians throughout.
[[nodiscard]] Comparison compare(int pairs, const Timed& ours, const Timed& theirs);

[[nodiscard]] Row rowOf(const std::string& what, const Comparison& comparison, double goal);

// Starts a command with its output thrown away; `ended` waits for it. Throws std::runtime_error when it
// cannot be started, or fails.
class Command {
  public:
    Command(const std::vector<std::string>& words, const desktop_test::Environment& environment);
    void ended();

  private:
    std::string name_;
    int pid_ = -1;
};

// From the start of the command to its end.
[[nodiscard]] Timed wholeRun(std::vector<std::string> words, const desktop_test::Environment& environment);

}  // namespace benchmark
