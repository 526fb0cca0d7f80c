#include "platform/freedesktop/files/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "platform/Text.h"
#include "platform/freedesktop/files/PosixFileSystem.h"
#include "platform/freedesktop/files/Quoting.h"

namespace platform::freedesktop {

namespace {

namespace fs = std::filesystem;

bool isFolder(const fs::path& path) {
    std::error_code unknown;
    return fs::is_directory(path, unknown);
}

std::string_view withoutLeadingSpace(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// What follows `prefix`, itself after white space; absent when the text goes on differently.
std::optional<std::string_view> after(std::string_view text, std::string_view prefix) {
    text = withoutLeadingSpace(text);
    if (!text.starts_with(prefix)) return std::nullopt;
    return text.substr(prefix.size());
}

// The folder in one line of user-dirs.dirs, XDG_DESKTOP_DIR="$HOME/…" or ="/…"; absent for any other line.
std::optional<fs::path> desktopInLine(std::string_view line, const std::optional<fs::path>& home) {
    constexpr std::string_view homeVariable = "$HOME";
    auto value = after(line, "XDG_DESKTOP_DIR");
    if (value) value = after(*value, "=");
    if (!value || !withoutLeadingSpace(*value).starts_with('"')) return std::nullopt;
    const auto path = unquoted(withoutLeadingSpace(*value));
    if (path.starts_with('/')) return path;
    if (!home || !path.starts_with(homeVariable)) return std::nullopt;
    const auto inHome = path.substr(homeVariable.size());
    if (!inHome.empty() && !inHome.starts_with('/')) return std::nullopt;
    return home->string() + inHome;
}

}  // namespace

std::optional<std::string> processEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<fs::path> registeredHome() {
    std::array<char, 16384> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return std::nullopt;
    return fs::path(entry.pw_dir);
}

std::optional<fs::path> XdgFolders::absolutePath(const char* name) const {
    const auto value = environment_(name);
    return value && value->starts_with('/') ? std::optional<fs::path>(*value) : std::nullopt;
}

std::optional<fs::path> XdgFolders::inHome(const char* relative) const {
    const auto folder = home();
    return folder ? std::optional(*folder / relative) : std::nullopt;
}

std::optional<fs::path> XdgFolders::home() const {
    if (auto folder = absolutePath("HOME")) return folder;
    auto folder = homeOfUser_();
    return folder && folder->is_absolute() ? folder : std::nullopt;
}

std::optional<fs::path> XdgFolders::applicationSupport() const {
    if (auto library = inHome("Library/Application Support"); library && isFolder(*library)) return library;
    if (auto folder = absolutePath("XDG_DATA_HOME")) return folder;
    return inHome(".local/share");
}

std::optional<fs::path> XdgFolders::configHome() const {
    if (auto folder = absolutePath("XDG_CONFIG_HOME")) return folder;
    return inHome(".config");
}

std::optional<fs::path> XdgFolders::configuredDesktop() const {
    const auto config = configHome();
    if (!config) return std::nullopt;
    const auto text = PosixFileSystem().read(*config / "user-dirs.dirs");
    if (!text) return std::nullopt;
    std::optional<fs::path> found;
    for (const auto line : split(text.value(), '\n'))
        if (auto folder = desktopInLine(line, home())) found = folder;
    return found;
}

std::optional<fs::path> XdgFolders::desktop() const {
    if (auto folder = configuredDesktop(); folder && isFolder(*folder)) return folder;
    if (auto folder = inHome("Desktop"); folder && isFolder(*folder)) return folder;
    return std::nullopt;
}

fs::path XdgFolders::temporary() const {
    return absolutePath("TMPDIR").value_or("/tmp");
}

}  // namespace platform::freedesktop
