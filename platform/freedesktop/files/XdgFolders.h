#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/Files.h"

namespace platform::freedesktop {

// The value of an environment variable; absent when it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;
// That of this process.
[[nodiscard]] std::optional<std::string> processEnvironment(const char* name);

// The home folder of the process's user according to the user database.
[[nodiscard]] std::optional<std::filesystem::path> registeredHome();

// The user's folders by the XDG Base Directory Specification and xdg-user-dirs. A relative path in a
// variable counts as not set.
class XdgFolders final : public Folders {
  public:
    explicit XdgFolders(Environment environment = processEnvironment,
                        std::function<std::optional<std::filesystem::path>()> homeOfUser = registeredHome)
        : environment_(std::move(environment)), homeOfUser_(std::move(homeOfUser)) {}

    [[nodiscard]] std::optional<std::filesystem::path> home() const override;
    // "Library/Application Support" in a home folder that has one, whatever XDG_DATA_HOME says.
    [[nodiscard]] std::optional<std::filesystem::path> applicationSupport() const override;
    // Absent when there is no such folder.
    [[nodiscard]] std::optional<std::filesystem::path> desktop() const override;
    [[nodiscard]] std::filesystem::path temporary() const override;

    // Where programs keep the user's settings; absent when it cannot be told.
    [[nodiscard]] std::optional<std::filesystem::path> configHome() const;

  private:
    [[nodiscard]] std::optional<std::filesystem::path> absolutePath(const char* name) const;
    [[nodiscard]] std::optional<std::filesystem::path> inHome(const char* relative) const;
    [[nodiscard]] std::optional<std::filesystem::path> configuredDesktop() const;

    Environment environment_;
    std::function<std::optional<std::filesystem::path>()> homeOfUser_;
};

}  // namespace platform::freedesktop
