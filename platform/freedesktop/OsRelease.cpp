#include "platform/freedesktop/OsRelease.h"

#include <sys/utsname.h>

#include <system_error>

namespace platform::freedesktop {

namespace {

// One word of the shell: in double quotes a backslash takes the next character as it is, in single quotes
// nothing does.
std::string unquoted(std::string_view word) {
    const char quote = !word.empty() && (word[0] == '"' || word[0] == '\'') ? word[0] : '\0';
    std::string value;
    for (std::size_t i = quote ? 1 : 0; i < word.size() && word[i] != quote; ++i) {
        if (word[i] == '\\' && quote != '\'' && i + 1 < word.size()) ++i;
        value += word[i];
    }
    return value;
}

}  // namespace

std::string osReleaseField(std::string_view text, std::string_view field) {
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.starts_with(field) && line.substr(field.size()).starts_with('='))
            return unquoted(line.substr(field.size() + 1));
    }
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
    std::error_code failed;
    auto path = std::filesystem::read_symlink("/proc/self/exe", failed);
    return failed ? std::nullopt : std::optional(std::move(path));
}

}  // namespace platform::freedesktop
