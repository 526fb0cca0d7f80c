#include <X11/keysym.h>
#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "benchmarks/DesktopChange.h"
#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "benchmarks/TaggedSpaces.h"
#include "tests/support/Picture.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::MapState;
using desktop_test::PrivateDesktop;
using desktop_test::Rectangle;
using desktop_test::WindowManager;

constexpr std::size_t kTags = 3;
constexpr double kMostForQuickSwitcher = 10;  // milliseconds
constexpr std::uint32_t kTarget = 2;
constexpr int kRowOfTarget = 4;                     // of the menu's rows that can be chosen, from 1
constexpr desktop_test::Rgb kHighlight = 0x2B7DB0;  // the toolkit's, of the row that is chosen
constexpr int kColumn = 20;                         // from the menu's left edge, beside the text

void require(bool isThere, const char* what) {
    if (!isThere) throw std::runtime_error(what);
}

// The menu of the application's status button.
class StatusMenu {
  public:
    explicit StatusMenu(PrivateDesktop& desktop) : desktop_(desktop) {}

    void open() {
        const auto button = place("orvellos", "DOCK");
        desktop_.devices().click(button.x + button.width / 2, button.y + button.height / 2);
        place_ = place("orvello", "MENU");
    }

    // Opens the menu, goes through it by the keyboard, and returns how far below its top the row is.
    int findRow(int row) {
        open();
        int y = -1;
        for (int i = 0; i < row; ++i) {
            auto hands = desktop_.devices();
            hands.typeKeys({hands.keyFor(XK_Down)});
            require(desktop_test::waitUntil([&] { return std::exchange(y, highlight()) != y && y >= 0; }),
                    "the menu's highlight does not move");
        }
        desktop_.devices().typeKeys({desktop_.devices().keyFor(XK_Escape)});
        return y;
    }

    // Presses the button on the row, which does nothing yet.
    void press(int row) {
        desktop_.devices().movePointer(place_.x + kColumn, place_.y + row);
        require(desktop_test::waitUntil([&] { return highlight() == row; }), "the row is not highlighted");
        desktop_.devices().pressButton(XCB_BUTTON_INDEX_1);
    }

  private:
    // Where the application's window of that name and type is; waits for it.
    Rectangle place(const std::string& title, const std::string& type) {
        auto& x = desktop_.x();
        std::optional<Rectangle> found;
        const auto isIt = [&](xcb_window_t window) {
            const auto types = x.atoms(window, "_NET_WM_WINDOW_TYPE");
            return x.mapState(window) == MapState::Viewable && x.text(window, "_NET_WM_NAME") == title &&
                   std::ranges::any_of(
                       types, [&](const auto& each) { return each.find(type) != std::string::npos; });
        };
        require(desktop_test::waitUntil([&] {
                    for (const auto window : x.allWindows())
                        if (isIt(window)) found = x.geometry(window);
                    return found.has_value();
                }),
                "the status button or its menu does not come up");
        return *found;
    }

    // The middle of the highlighted row, from the menu's top; negative without one.
    int highlight() {
        const auto picture =
            desktop_test::takePicture(desktop_.x(), {place_.x + kColumn, place_.y, 1, place_.height});
        int first = -1;
        int last = -2;
        for (int y = 0; y < picture.height(); ++y)
            if (desktop_test::isNear(picture.at(0, y), kHighlight, 30)) {
                if (first < 0) first = y;
                last = y;
            }
        return first < 0 ? -1 : (first + last) / 2;
    }

    PrivateDesktop& desktop_;
    Rectangle place_;
};

// From the end of a click on the row of the open menu to the change of desktop.
Timed jumpByMenu(PrivateDesktop& desktop) {
    StatusMenu menu(desktop);
    const int row = menu.findRow(kRowOfTarget);
    return [&desktop, menu, row]() mutable {
        goToFirstDesktop(desktop);
        menu.open();
        menu.press(row);
        const auto start = std::chrono::steady_clock::now();
        desktop.devices().releaseButton(XCB_BUTTON_INDEX_1);
        awaitDesktop(desktop, kTarget);
        return Milliseconds(std::chrono::steady_clock::now() - start);
    };
}

// From the release of its hotkey until the window manager lists the quick switcher.
Row measureQuickSwitcher(PrivateDesktop& desktop, const Effort& effort) {
    auto& x = desktop.x();
    auto hands = desktop.devices();
    const auto usual = x.clients().size();
    std::vector<double> times;
    for (int i = 0; i < effort.pairs; ++i) {
        hands.typeKeys({hands.keyFor(XK_Control_L), hands.keyFor(XK_Alt_L), hands.keyFor(XK_Super_L),
                        hands.keyFor(XK_J)});
        const auto start = std::chrono::steady_clock::now();
        while (x.clients().size() == usual)
            require(std::chrono::steady_clock::now() - start < std::chrono::seconds(30),
                    "the quick switcher does not come up");
        times.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
        require(desktop_test::waitUntil([&] {
                    const auto active = x.activeWindow();
                    return active && x.text(*active, "_NET_WM_NAME") == "Jump to Space";
                }),
                "the quick switcher has not the keyboard");
        hands.typeKeys({hands.keyFor(XK_Escape)});
        require(desktop_test::waitUntil([&] { return x.clients().size() == usual; }),
                "the quick switcher does not close");
    }
    const double time = median(std::move(times));
    return {"hotkey to the quick switcher", fmt::format("{:.1f} ms", time), "< 10 ms",
            time < kMostForQuickSwitcher};
}

}  // namespace

std::vector<Row> measureInterface(const Effort& effort) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    tagSpaces(desktop, kTags);
    recordQuickSwitcherKey(desktop);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, kTags + 1);
    return {rowOf("click on a Space in the menu / wmctrl -s, until it is there",
                  compare(effort.pairs, jumpByMenu(desktop),
                          untilDesktop(desktop, {"wmctrl", "-s", std::to_string(kTarget)}, kTarget)),
                  1.1),
            measureQuickSwitcher(desktop, effort)};
}

}  // namespace benchmark
