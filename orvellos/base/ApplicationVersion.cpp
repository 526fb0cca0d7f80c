#include "orvellos/base/ApplicationVersion.h"

#include <BuildInformation.h>
#include <fmt/format.h>

namespace orvellos {

std::string applicationVersionText() {
    return fmt::format("{} ({} · {})", build::kVersion, build::kNumber, build::kRevision);
}

}  // namespace orvellos
