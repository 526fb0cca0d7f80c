#include "tests/support/ProcessTable.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace desktop_test {

std::vector<pid_t> processesWithEnvironment(const std::string& text) {
    std::vector<pid_t> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
        const auto name = entry.path().filename().string();
        if (!std::ranges::all_of(name, [](unsigned char c) { return std::isdigit(c) != 0; })) continue;
        std::ifstream file(entry.path() / "environ", std::ios::binary);
        const std::string environment((std::istreambuf_iterator<char>(file)),
                                      std::istreambuf_iterator<char>());
        if (environment.find(text) != std::string::npos) found.push_back(std::stoi(name));
    }
    return found;
}

}  // namespace desktop_test
