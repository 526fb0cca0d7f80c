#pragma once

#include <optional>
#include <string>

#include "orvellos/tags/TagID.h"
#include "platform/Geometry.h"

namespace orvellos {

// One label bound to one Space.
struct Tag {
    TagID id;
    std::string label;
    std::string colorHex;  // "#RRGGBB"; any text is kept
    std::optional<platform::Rect>
        frame;  // where the user put the window; absent for a tag at the shared position
    std::optional<std::string> spaceUUID;
    bool operator==(const Tag&) const = default;
};

}  // namespace orvellos
