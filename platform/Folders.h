#pragma once

#include <filesystem>
#include <optional>

namespace platform {

// The user's well-known folders. None is created by asking.
class Folders {
  public:
    virtual ~Folders() = default;

    // Absent when the user has no home folder.
    [[nodiscard]] virtual std::optional<std::filesystem::path> home() const = 0;
    // Where programs keep the user's data; absent when it cannot be told.
    [[nodiscard]] virtual std::optional<std::filesystem::path> applicationSupport() const = 0;
    [[nodiscard]] virtual std::optional<std::filesystem::path> desktop() const = 0;
    [[nodiscard]] virtual std::filesystem::path temporary() const = 0;
};

}  // namespace platform
