#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform::x11 {

// The class part of WM_CLASS ("instance NUL class NUL") in UTF-8. The property is Latin-1 by ICCCM 4.1.2.5,
// but many programs write UTF-8. Absent when there is no class part.
[[nodiscard]] std::optional<std::string> classPart(std::string_view property);

}  // namespace platform::x11
