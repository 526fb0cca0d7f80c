#include "platform/freedesktop/processes/ProgramSearch.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform::freedesktop {

namespace {

bool canBeStarted(const std::filesystem::path& file) {
    std::error_code unreadable;
    return std::filesystem::is_regular_file(file, unreadable) && ::access(file.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::filesystem::path> findProgramInFolders(std::string_view program,
                                                          std::string_view folders) {
    while (!folders.empty()) {
        const auto folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        auto file = std::filesystem::path(folder) / program;
        if (!folder.empty() && canBeStarted(file)) return file;
    }
    return std::nullopt;
}

std::optional<std::filesystem::path> findProgram(std::string_view program) {
    const char* folders = std::getenv("PATH");
    return folders ? findProgramInFolders(program, folders) : std::nullopt;
}

}  // namespace platform::freedesktop
