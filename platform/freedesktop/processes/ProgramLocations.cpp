#include "platform/freedesktop/processes/ProgramLocations.h"

#include <BuildInformation.h>

#include <algorithm>
#include <iterator>
#include <system_error>

namespace platform::freedesktop {

namespace {

using std::filesystem::path;

bool endsWith(const path& folder, const path& tail) {
    const auto length = std::distance(tail.begin(), tail.end());
    if (std::distance(folder.begin(), folder.end()) < length) return false;
    return std::equal(tail.begin(), tail.end(), std::prev(folder.end(), length));
}

}  // namespace

ProgramLocations::ProgramLocations() {
    std::error_code unreadable;
    self_ = std::filesystem::read_symlink("/proc/self/exe", unreadable);
    if (self_.empty()) self_ = path(build::kInstallPrefix) / build::kBinFolder / "orvello";
}

path ProgramLocations::prefix() const {
    auto folder = self_.parent_path();
    const path own = endsWith(folder, build::kLibexecFolder) ? build::kLibexecFolder : build::kBinFolder;
    for (auto levels = std::distance(own.begin(), own.end()); levels > 0; --levels)
        folder = folder.parent_path();
    return folder;
}

std::string ProgramLocations::libexecProgram(const std::string& name) const {
    return prefix() / build::kLibexecFolder / name;
}

path ProgramLocations::command() const {
    return prefix() / build::kBinFolder / "orvello";
}

}  // namespace platform::freedesktop
