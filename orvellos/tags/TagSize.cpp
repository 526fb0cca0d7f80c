#include "orvellos/tags/TagSize.h"

#include <algorithm>
#include <cmath>

namespace orvellos {

namespace {

struct Measure {
    double fractionOfScreen;
    double minimum;
};
constexpr std::array<Measure, 6> kMeasures = {
    {{0.025, 28}, {0.04, 42}, {0.06, 64}, {0.095, 100}, {0.15, 160}, {0.23, 240}}};
constexpr double kAssumedScreenHeight = 900;

}  // namespace

double baseHeight(TagSize size, const std::optional<platform::Screen>& mainScreen) {
    const auto& measure = kMeasures[static_cast<std::size_t>(size)];
    const double screen = mainScreen ? mainScreen->frame.height : kAssumedScreenHeight;
    return std::max(std::round(screen * measure.fractionOfScreen), measure.minimum);
}

}  // namespace orvellos
