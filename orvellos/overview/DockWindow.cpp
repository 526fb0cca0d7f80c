#include "orvellos/overview/DockWindow.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace orvellos {

namespace {

constexpr std::int64_t kChipLayer = 17;
constexpr double kSmallestChip = 40;
constexpr double kLargestChip = 250;
constexpr std::int64_t kFullScreenLayer = 3;
constexpr double kLeastFullWidth = 1000;
constexpr double kLeastFullHeight = 600;
constexpr std::size_t kMostFallbackWindows = 20;

bool isChipSide(double length) {
    return length >= kSmallestChip && length <= kLargestChip;
}

bool isChip(const DockWindow& window) {
    return window.layer == kChipLayer && isChipSide(window.width) && isChipSide(window.height);
}

bool fillsScreen(const DockWindow& window) {
    return window.layer == kFullScreenLayer && window.width >= kLeastFullWidth &&
           window.height >= kLeastFullHeight && window.name.empty();
}

DockWindow fromEntry(const platform::OnScreenWindow& entry) {
    const auto bounds = entry.bounds.value_or(platform::OnScreenBounds());
    return {entry.layer.value_or(0), bounds.width.value_or(-1), bounds.height.value_or(-1),
            bounds.x.value_or(-1),   bounds.y.value_or(-1),     entry.alpha.value_or(-1),
            entry.name.value_or("")};
}

// A coordinate without its fraction, within what fits a line.
long long whole(double value) {
    return std::isfinite(value) ? static_cast<long long>(std::clamp(value, -1e15, 1e15)) : 0;
}

}  // namespace

std::vector<DockWindow> dockWindows(std::span<const platform::OnScreenWindow> windows) {
    std::vector<DockWindow> result;
    for (const auto& entry : windows)
        if (entry.ownerName == "Dock") result.push_back(fromEntry(entry));
    return result;
}

std::string summary(const DockWindow& window) {
    return fmt::format("L{} α{:.2f} {}x{}@{},{} name=\"{}\"", window.layer, window.alpha, whole(window.width),
                       whole(window.height), whole(window.x), whole(window.y), window.name);
}

Detection classify(std::span<const DockWindow> windows, bool acceptL3Fallback) {
    Detection detection;
    detection.dockWindowCount = windows.size();
    detection.sawAppIcon =
        std::ranges::any_of(windows, [](const auto& window) { return window.name == "appicon"; });
    detection.sawNonPositiveLayer =
        std::ranges::any_of(windows, [](const auto& window) { return window.layer < 1; });
    detection.l17ChipCount = static_cast<std::size_t>(std::ranges::count_if(windows, isChip));
    if (detection.sawAppIcon || detection.l17ChipCount >= 1) {
        detection.active = true;
    } else if (acceptL3Fallback && std::ranges::any_of(windows, fillsScreen) &&
               !detection.sawNonPositiveLayer && windows.size() <= kMostFallbackWindows) {
        detection.active = true;
        detection.l3Fallback = true;
    }
    return detection;
}

}  // namespace orvellos
