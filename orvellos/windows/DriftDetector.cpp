#include "orvellos/windows/DriftDetector.h"

#include <algorithm>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

std::optional<std::string> otherSpace(const DriftDetector::Input& input,
                                      const DriftDetector::UuidLookup& spaceUUID) {
    for (const auto pin : input.currentPins)
        if (pin.value != 0 && pin != input.storedManagedID) return spaceUUID(pin);
    return std::nullopt;
}

}  // namespace

std::vector<WindowDrift> DriftDetector::detect(std::span<const Input> inputs, const UuidLookup& spaceUUID) {
    std::vector<WindowDrift> drifts;
    for (const auto& input : inputs) {
        const auto actual = otherSpace(input, spaceUUID);
        if (!actual || *actual == input.storedUUID) continue;
        log(LogCategory::Nav,
            "drift[" + input.tagID.text() + "]: stored=" + input.storedUUID + " → actual=" + *actual);
        drifts.push_back({input.tagID, input.storedUUID, *actual});
    }
    return drifts;
}

std::vector<WindowDrift> DriftDetector::acceptedDrifts(std::span<const WindowDrift> drifts,
                                                       bool missionControlRecentlyActive) {
    std::vector<WindowDrift> accepted;
    if (!missionControlRecentlyActive) return accepted;
    std::ranges::copy_if(drifts, std::back_inserter(accepted), [&](const auto& drift) {
        return std::ranges::count(drifts, drift.actualUUID, &WindowDrift::actualUUID) == 1;
    });
    return accepted;
}

}  // namespace orvellos
