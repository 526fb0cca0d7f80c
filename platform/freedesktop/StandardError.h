#pragma once

#include <string_view>

namespace platform::freedesktop {

// Writes the whole text to standard error. Never fails toward the caller, and a reader that is gone does not
// end the process. May be called from any thread.
void writeStandardError(std::string_view text);

}  // namespace platform::freedesktop
