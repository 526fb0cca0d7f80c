#include "platform/freedesktop/files/OsRelease.h"

#include <sys/utsname.h>

#include "platform/Text.h"
#include "platform/freedesktop/files/Quoting.h"

namespace platform::freedesktop {

std::string osReleaseField(std::string_view text, std::string_view field) {
    for (const auto line : split(text, '\n'))
        if (line.starts_with(field) && line.substr(field.size()).starts_with('='))
            return unquoted(line.substr(field.size() + 1));
    return {};
}

std::string OsRelease::operatingSystemVersion() const {
    std::string version;
    for (const char* file : {"/etc/os-release", "/usr/lib/os-release"}) {
        if (!version.empty()) break;
        if (const auto text = files_.read(file)) version = osReleaseField(text.value(), "PRETTY_NAME");
    }
    utsname kernel{};
    if (::uname(&kernel) != 0) return version.empty() ? "unknown" : version;
    if (!version.empty()) version += ", ";
    return version + kernel.sysname + " " + kernel.release;
}

std::optional<std::filesystem::path> OsRelease::executablePath() const {
    return "/proc/self/exe";
}

}  // namespace platform::freedesktop
