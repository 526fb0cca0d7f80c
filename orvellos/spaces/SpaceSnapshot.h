#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Spaces.h"

namespace orvellos {

struct SpaceInfo {
    std::string uuid;
    std::optional<platform::ManagedSpaceId> managedSpaceID;
    std::string displayIdentifier;   // empty when its display has none
    std::size_t indexInDisplay = 0;  // among the display's Spaces that carry a uuid
    bool isCurrent = false;
    bool operator==(const SpaceInfo&) const = default;
};

struct DisplaySpaces {
    std::optional<std::string> displayIdentifier;
    std::optional<std::string> currentSpaceUUID;
    std::optional<platform::ManagedSpaceId> currentManagedSpaceID;
    std::vector<SpaceInfo> spaces;
    bool operator==(const DisplaySpaces&) const = default;
};

// The Space layout of one answer of the window server, display after display in its order.
struct SpaceSnapshot {
    std::vector<DisplaySpaces> displays;

    // An absent answer gives an empty snapshot; Spaces without a uuid are left out.
    [[nodiscard]] static SpaceSnapshot of(const std::optional<platform::ManagedDisplaySpaces>& answer);
    bool operator==(const SpaceSnapshot&) const = default;
};

}  // namespace orvellos
