#pragma once

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/System.h"

namespace platform::simulated {

class SimulatedSystemInformation final : public SystemInformation {
  public:
    [[nodiscard]] std::string operatingSystemVersion() const override { return version; }
    [[nodiscard]] std::optional<std::filesystem::path> executablePath() const override { return executable; }

    std::string version = "Example OS 1.0";
    std::optional<std::filesystem::path> executable = "/opt/orvellos/orvellos";
};

// A system log that keeps what is written.
class SimulatedSystemLog final : public SystemLog {
  public:
    using Entries = std::vector<std::pair<std::string, std::string>>;  // category and message, oldest first

    void write(std::string_view category, std::string_view message) override {
        const std::scoped_lock guard(lock_);
        entries_.emplace_back(category, message);
    }
    void writeGeneral(std::string_view message) override {
        const std::scoped_lock guard(lock_);
        general_.emplace_back(message);
    }

    [[nodiscard]] Entries entries() const {
        const std::scoped_lock guard(lock_);
        return entries_;
    }
    [[nodiscard]] std::vector<std::string> general() const {
        const std::scoped_lock guard(lock_);
        return general_;
    }

  private:
    mutable std::mutex lock_;
    Entries entries_;
    std::vector<std::string> general_;
};

}  // namespace platform::simulated
