#include "benchmarks/DesktopChange.h"
#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "benchmarks/TaggedSpaces.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::PrivateDesktop;
using desktop_test::WindowManager;

// Maps plain windows and waits until the window manager lists them all.
void openWindows(PrivateDesktop& desktop, std::size_t count) {
    auto& x = desktop.x();
    for (std::size_t i = 0; i < count; ++i) {
        const auto window = xcb_generate_id(x.connection());
        xcb_create_window(x.connection(), XCB_COPY_FROM_PARENT, window, x.root(), 10, 10, 100, 80, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        constexpr std::string_view kClass("window\0Window\0", 14);
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                            8, kClass.size(), kClass.data());
        xcb_map_window(x.connection(), window);
    }
    xcb_flush(x.connection());
    awaitClients(desktop, count);
}

}  // namespace

std::vector<Row> measureCommands(const Effort& effort) {
    const auto orvello = PrivateDesktop::program("orvello");
    std::vector<Row> rows;
    const auto measure = [&](const std::string& what, const Timed& ours, const Timed& theirs, double goal) {
        rows.push_back(rowOf(what, compare(effort.pairs, ours, theirs), goal));
    };
    {
        const PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin}});
        const auto& environment = desktop.environment;
        measure("orvello dump / wmctrl -d, KWin", wholeRun({orvello, "dump"}, environment),
                wholeRun({"wmctrl", "-d"}, environment), 0.92);
    }
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    const auto& environment = desktop.environment;
    measure("orvello dump / wmctrl -d, openbox", wholeRun({orvello, "dump"}, environment),
            wholeRun({"wmctrl", "-d"}, environment), 0.47);
    measure("orvello goto / xdotool set_desktop, until it is done",
            untilDesktop(desktop, {orvello, "goto", "3"}, 2),
            untilDesktop(desktop, {"xdotool", "set_desktop", "2"}, 2), 0.85);
    openWindows(desktop, 200);
    measure("orvello windows / wmctrl -lG, 200 windows", wholeRun({orvello, "windows"}, environment),
            wholeRun({"wmctrl", "-lG"}, environment), 0.10);
    return rows;
}

}  // namespace benchmark
