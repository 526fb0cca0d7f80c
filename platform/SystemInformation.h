#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace platform {

// Facts about the system and this process that no run changes.
class SystemInformation {
  public:
    virtual ~SystemInformation() = default;

    // The operating system's name and version as a person would read them; never empty.
    [[nodiscard]] virtual std::string operatingSystemVersion() const = 0;
    // The program that is running; absent when the system does not tell.
    [[nodiscard]] virtual std::optional<std::filesystem::path> executablePath() const = 0;
};

}  // namespace platform
