#pragma once

#include <string_view>

namespace platform::freedesktop {

// Whether a program of that name can be started from one of the folders, which are separated by colons as in
// PATH. An empty folder, which would be the current one, is left out.
[[nodiscard]] bool isProgramInFolders(std::string_view program, std::string_view folders);
// The same for this process's PATH.
[[nodiscard]] bool isProgramInstalled(std::string_view program);

}  // namespace platform::freedesktop
