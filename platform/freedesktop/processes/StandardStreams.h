#pragma once

#include <string_view>

namespace platform::freedesktop {

// Write the whole text. They never fail toward the caller, and a reader that is gone does not end the
// process. May be called from any thread.
void writeStandardOutput(std::string_view text);
void writeStandardError(std::string_view text);

}  // namespace platform::freedesktop
