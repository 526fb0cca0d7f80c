#include "platform/freedesktop/ProgramLocations.h"

#include <system_error>

namespace platform::freedesktop {

namespace {
constexpr const char* kLibexecFolder = "libexec/orvello";
}

ProgramLocations::ProgramLocations() {
    std::error_code unreadable;
    self_ = std::filesystem::read_symlink("/proc/self/exe", unreadable);
}

std::string ProgramLocations::libexecProgram(const std::string& name) const {
    const auto folder = self_.parent_path();
    if (folder.parent_path().parent_path() / kLibexecFolder == folder) return folder / name;
    return folder.parent_path() / kLibexecFolder / name;
}

std::filesystem::path ProgramLocations::command() const {
    return self_.parent_path().parent_path().parent_path() / "bin/orvello";
}

}  // namespace platform::freedesktop
