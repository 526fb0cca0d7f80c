#pragma once

#include <filesystem>
#include <vector>

#include "platform/Files.h"

namespace platform::simulated {

// A file browser that remembers what it was asked to show.
class SimulatedFileBrowser final : public FileBrowser {
  public:
    void reveal(const std::filesystem::path& file) override { revealed.push_back(file); }

    std::vector<std::filesystem::path> revealed;
};

}  // namespace platform::simulated
