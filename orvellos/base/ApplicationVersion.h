#pragma once

#include <string>

namespace orvellos {

// This build's version, build number and source revision as the user sees them: "0.1.13 (107 · bbdf2636)".
[[nodiscard]] std::string applicationVersionText();

}  // namespace orvellos
