#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace platform::freedesktop {

// The file of the program of that name in the first of the folders from which it can be started. The folders
// are separated by colons as in PATH; an empty one, which would be the current one, is left out.
[[nodiscard]] std::optional<std::filesystem::path> findProgramInFolders(std::string_view program,
                                                                        std::string_view folders);
// The same for this process's PATH.
[[nodiscard]] std::optional<std::filesystem::path> findProgram(std::string_view program);
[[nodiscard]] inline bool isProgramInstalled(std::string_view program) {
    return findProgram(program).has_value();
}

}  // namespace platform::freedesktop
