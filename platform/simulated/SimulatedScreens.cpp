#include "platform/simulated/SimulatedScreens.h"

#include <utility>

namespace platform::simulated {

void SimulatedScreens::addScreen(const Rect& frame, std::optional<std::string> displayUuid) {
    const DisplayId display{static_cast<std::uint32_t>(screens_.size()) + 1};
    screens_.push_back({display, frame, frame, 1});
    if (displayUuid) uuids_[display] = std::move(*displayUuid);
}

void SimulatedScreens::setScreens(std::vector<Screen> screens) {
    screens_ = std::move(screens);
    runLoop_.post([observers = parametersChanged_] { observers.notify(); });
}

std::optional<Screen> SimulatedScreens::mainScreen() const {
    return screens_.empty() ? std::nullopt : std::optional(screens_.front());
}

DisplayId SimulatedScreens::mainDisplayId() const {
    return screens_.empty() ? DisplayId{} : screens_.front().displayId.value_or(DisplayId{});
}

std::optional<std::string> SimulatedScreens::displayUuid(DisplayId display) const {
    const auto found = uuids_.find(display);
    return found == uuids_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace platform::simulated
