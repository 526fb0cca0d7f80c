#include "platform/freedesktop/ProgramSearch.h"

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

bool isProgramInFolders(std::string_view program, std::string_view folders) {
    while (!folders.empty()) {
        const auto folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        if (!folder.empty() && canBeStarted(std::filesystem::path(folder) / program)) return true;
    }
    return false;
}

bool isProgramInstalled(std::string_view program) {
    const char* folders = std::getenv("PATH");
    return folders && isProgramInFolders(program, folders);
}

}  // namespace platform::freedesktop
