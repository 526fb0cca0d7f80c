#pragma once

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Files.h"
#include "platform/RunLoop.h"

namespace platform::freedesktop {

// The user's settings in one JSON file, an object with a member for each key:
//
//     boolean, integer, double, string    true, 3, 3.0, "medium"
//     data                                {"data": "its bytes as text"}, or {"bytes": [255, 0, …]} when they
//                                         are not UTF-8
//     dictionary                          {"x": 100, "y": 900.5}: the numbers of any other object
//
// A member that is none of these has no value and stays in the file as it is. A file that cannot be read as
// such an object is moved aside to "<name>.corrupt-<yyyyMMdd-HHmmss>". When that fails too, or there is no
// file to write, the settings live in memory for this run. The file may be edited while no program uses it.
class JsonDefaultsStore final : public DefaultsStore {
  public:
    using Report = std::function<void(std::string_view message)>;

    // Reads the file, now and never again; absent when the user has no folder for it. `report` is told of
    // every failure in a line for the log.
    JsonDefaultsStore(FileSystem& files, const RunLoop& clock, std::optional<std::filesystem::path> file,
                      Report report);

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override;
    void set(std::string_view key, DefaultsValue value) override;
    void remove(std::string_view key) override;

  private:
    void load();
    void setAside();
    void write();

    FileSystem& files_;
    const RunLoop& clock_;
    std::optional<std::filesystem::path> file_;  // absent when nothing is to be written
    Report report_;
    nlohmann::json members_ = nlohmann::json::object();
};

// The file's place in the user's configuration folder; absent without one.
[[nodiscard]] std::optional<std::filesystem::path> defaultsFilePath(
    const std::optional<std::filesystem::path>& configurationFolder);

}  // namespace platform::freedesktop
