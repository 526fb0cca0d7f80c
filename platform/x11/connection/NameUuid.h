#pragma once

#include <string>
#include <string_view>

namespace platform::x11 {

// The upper-case version 5 UUID of `name` in a name space, itself a UUID in textual form (RFC 4122, 4.3).
[[nodiscard]] std::string nameUuid(const char* nameSpace, std::string_view name);

}  // namespace platform::x11
