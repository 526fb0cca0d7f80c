#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/WindowList.h"

namespace orvellos {

// A window of the Dock, from which the state of Mission Control is told. Points, origin at the top left of
// the main display; what the window list did not give is 0 (the layer), -1 or empty.
struct DockWindow {
    std::int64_t layer = 0;
    double width = -1;
    double height = -1;
    double x = -1;
    double y = -1;
    double alpha = -1;
    std::string name;
    bool operator==(const DockWindow&) const = default;
};

// What one look at the Dock's windows says.
struct Detection {
    bool active = false;  // Mission Control is open
    std::size_t dockWindowCount = 0;
    bool sawAppIcon = false;
    std::size_t l17ChipCount = 0;  // windows that stand for a Space each
    bool sawNonPositiveLayer = false;
    std::vector<std::string> summaries;  // of the first 12 windows, one line each
    bool l3Fallback = false;             // only a window that fills the screen speaks for it
};

// The Dock's windows of a list, in its order.
[[nodiscard]] std::vector<DockWindow> dockWindows(std::span<const platform::OnScreenWindow> windows);
// "L17 α1.00 120x80@40,300 name="""
[[nodiscard]] std::string summary(const DockWindow& window);
// All of a Detection but the summaries. With `acceptL3Fallback` a window that fills the screen may decide.
[[nodiscard]] Detection classify(std::span<const DockWindow> windows, bool acceptL3Fallback);

}  // namespace orvellos
