#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/PairedRuns.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

// Asks for desktop 0, where every measurement of a change begins, and waits for it.
void goToFirstDesktop(desktop_test::PrivateDesktop& desktop);
// Returns when the condition holds, which is looked at whenever a property of the root changes, so that
// waiting keeps neither the server nor the processor busy. Throws std::runtime_error when `what` does not
// come.
void awaitRoot(desktop_test::PrivateDesktop& desktop, const std::string& what,
               const std::function<bool()>& condition);
// Returns when the root says that the desktop is current. Throws std::runtime_error when it does not.
void awaitDesktop(desktop_test::PrivateDesktop& desktop, std::uint32_t number);

// From the start of the command to the change to that desktop.
[[nodiscard]] Timed untilDesktop(desktop_test::PrivateDesktop& desktop, std::vector<std::string> words,
                                 std::uint32_t target);

}  // namespace benchmark
