#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "orvellos/tags/TagID.h"
#include "platform/Spaces.h"

namespace orvellos {

// A tag whose window is on a Space other than the stored one.
struct WindowDrift {
    TagID tagID;
    std::string storedUUID;
    std::string actualUUID;
    bool operator==(const WindowDrift&) const = default;
};

// Finds tag windows that are on another Space than theirs, and tells those that the user moved from those
// that the desktop moved.
class DriftDetector {
  public:
    struct Input {
        TagID tagID;
        std::string tagLabel;
        std::string storedUUID;
        platform::ManagedSpaceId storedManagedID;           // of the stored Space now
        std::vector<platform::ManagedSpaceId> currentPins;  // the Spaces that the window is on
        bool operator==(const Input&) const = default;
    };
    using UuidLookup = std::function<std::optional<std::string>(platform::ManagedSpaceId)>;

    // A window that is on its Space and on another one as well has drifted.
    [[nodiscard]] static std::vector<WindowDrift> detect(std::span<const Input> inputs,
                                                         const UuidLookup& spaceUUID);
    // The drifts to follow, in order: while Mission Control is, or was just, open, and each the only one
    // into its Space. A desktop that closes a Space moves all of its windows at once.
    [[nodiscard]] static std::vector<WindowDrift> acceptedDrifts(std::span<const WindowDrift> drifts,
                                                                 bool missionControlRecentlyActive);
};

}  // namespace orvellos
