#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/System.h"

namespace platform::simulated {

class SimulatedSystemInformation final : public SystemInformation {
  public:
    [[nodiscard]] std::string operatingSystemVersion() const override { return version; }
    [[nodiscard]] std::optional<std::filesystem::path> executablePath() const override { return executable; }

    std::string version = "Example OS 1.0";
    std::optional<std::filesystem::path> executable = "/opt/orvellos/orvellos";
};

}  // namespace platform::simulated
