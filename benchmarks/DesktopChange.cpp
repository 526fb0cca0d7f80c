#include "benchmarks/DesktopChange.h"

#include <poll.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace benchmark {

using desktop_test::PrivateDesktop;

void goToFirstDesktop(PrivateDesktop& desktop) {
    auto& x = desktop.x();
    x.switchToDesktop(0);
    xcb_flush(x.connection());
    awaitDesktop(desktop, 0);
}

void awaitRoot(PrivateDesktop& desktop, const std::string& what, const std::function<bool()>& condition) {
    auto& x = desktop.x();
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x.connection(), x.root(), XCB_CW_EVENT_MASK, &events);
    pollfd readable{xcb_get_file_descriptor(x.connection()), POLLIN, 0};
    while (!condition()) {
        bool changed = false;
        while (auto* event = xcb_poll_for_event(x.connection())) {
            std::free(event);
            changed = true;
        }
        if (changed) continue;
        if (poll(&readable, 1, static_cast<int>(desktop_test::kGenerousDeadline.count())) <= 0)
            throw std::runtime_error(what + " does not come");
    }
}

void awaitDesktop(PrivateDesktop& desktop, std::uint32_t number) {
    awaitRoot(desktop, "the change of desktop", [&] { return desktop.x().currentDesktop() == number; });
}

Timed untilDesktop(PrivateDesktop& desktop, std::vector<std::string> words, std::uint32_t target) {
    return [&desktop, words = std::move(words), target] {
        goToFirstDesktop(desktop);
        const auto start = std::chrono::steady_clock::now();
        Command command(words, desktop.environment);
        awaitDesktop(desktop, target);
        const auto end = std::chrono::steady_clock::now();
        command.ended();
        return Milliseconds(end - start);
    };
}

}  // namespace benchmark
