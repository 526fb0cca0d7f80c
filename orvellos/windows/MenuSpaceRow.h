#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "orvellos/tags/Tag.h"

namespace orvellos {

// One Space as the status menu lists it.
struct MenuSpaceRow {
    std::string spaceUUID;
    std::size_t displayIndex = 1;  // from 1, in the order of the list
    std::optional<Tag> tag;        // the first tag of the Space
    bool isActive = false;         // current on the display under the pointer
    bool operator==(const MenuSpaceRow&) const = default;
};

}  // namespace orvellos
