#pragma once

#include <string>

#include "orvellos/spaces/SpaceIdentifier.h"

namespace orvellos {

// Switches to the Space through the window server's entry points. True when the set-current entry point was
// called; false when there is no such Space or no such entry point. Whether the Space changed shows later.
bool switchToSpace(const SpaceIdentifier& spaces, const std::string& uuid);

}  // namespace orvellos
