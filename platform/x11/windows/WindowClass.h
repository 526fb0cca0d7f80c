#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform::x11 {

// The class part of WM_CLASS ("instance NUL class NUL") in UTF-8; the property is Latin-1 by the book (ICCCM
// 4.1.2.5), UTF-8 in what many programs write. Absent when there is none.
[[nodiscard]] std::optional<std::string> classPart(std::string_view property);

}  // namespace platform::x11
