#pragma once

#include "platform/Files.h"

namespace platform::simulated {

// Folders that are where a test says.
class SimulatedFolders final : public Folders {
  public:
    [[nodiscard]] std::optional<std::filesystem::path> home() const override { return homeFolder; }
    [[nodiscard]] std::optional<std::filesystem::path> applicationSupport() const override {
        return applicationSupportFolder;
    }
    [[nodiscard]] std::optional<std::filesystem::path> desktop() const override { return desktopFolder; }
    [[nodiscard]] std::filesystem::path temporary() const override { return temporaryFolder; }

    std::optional<std::filesystem::path> homeFolder = "/home/user";
    std::optional<std::filesystem::path> applicationSupportFolder = "/home/user/.local/share";
    std::optional<std::filesystem::path> desktopFolder = "/home/user/Desktop";
    std::filesystem::path temporaryFolder = "/tmp";
};

}  // namespace platform::simulated
