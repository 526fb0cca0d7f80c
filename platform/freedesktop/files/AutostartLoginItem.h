#pragma once

#include <filesystem>
#include <optional>
#include <utility>

#include "platform/Files.h"
#include "platform/Session.h"

namespace platform::freedesktop {

// The application's entry among the programs that the session starts (Desktop Application Autostart
// Specification). It is off when there is no entry, or one with Hidden=true, or one
// that GNOME's own settings have turned off (X-GNOME-Autostart-enabled=false).
class AutostartLoginItem final : public LoginItem {
  public:
    // `configHome` is where the user's settings are; without it the item is off and cannot be enabled.
    // `executable` is the absolute path of the program to start.
    AutostartLoginItem(FileSystem& files, const std::optional<std::filesystem::path>& configHome,
                       std::filesystem::path executable);

    [[nodiscard]] bool isEnabled() const override;
    // Writes the entry anew, for the executable as it is now.
    [[nodiscard]] MaybeError enable() override;
    // Keeps what the user may have added to the entry.
    [[nodiscard]] MaybeError disable() override;

  private:
    FileSystem& files_;
    std::optional<std::filesystem::path> entry_;
    std::filesystem::path executable_;
};

}  // namespace platform::freedesktop
