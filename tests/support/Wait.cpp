#include "tests/support/Wait.h"

#include <thread>

namespace desktop_test {

bool waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline) {
    constexpr std::chrono::milliseconds kInterval(3);
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!holds()) {
        if (std::chrono::steady_clock::now() >= end) return holds();
        std::this_thread::sleep_for(kInterval);
    }
    return true;
}

}  // namespace desktop_test
