#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace desktop_test {

// The processes of this user whose environment contains the text, wherever in the process tree they are.
[[nodiscard]] std::vector<pid_t> processesWithEnvironment(const std::string& text);

}  // namespace desktop_test
