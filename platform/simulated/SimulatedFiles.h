#pragma once

#include <deque>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/Files.h"

namespace platform::simulated {

// Files in memory, by absolute path, which a test looks into and changes. A failure reads as it does on the
// real file system.
class SimulatedFileSystem final : public FileSystem {
  public:
    [[nodiscard]] bool exists(const std::filesystem::path& path) const override;
    [[nodiscard]] Result<std::string> read(const std::filesystem::path& path) const override;
    [[nodiscard]] MaybeError writeAtomically(const std::filesystem::path& path,
                                             std::string_view bytes) override;
    [[nodiscard]] MaybeError writeNew(const std::filesystem::path& path, std::string_view bytes) override;
    [[nodiscard]] MaybeError move(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override;
    [[nodiscard]] MaybeError createFolders(const std::filesystem::path& folder) override;
    // A file that a test put there without a date has the epoch's.
    [[nodiscard]] std::optional<WallTime> modificationDate(const std::filesystem::path& path) const override;

    // Puts a file there, with its folders and the date `now`; not counted as a write.
    void put(const std::filesystem::path& path, std::string bytes);

    std::map<std::filesystem::path, std::string> files;
    std::map<std::filesystem::path, WallTime> modificationDates;
    std::set<std::filesystem::path> folders = {"/"};
    // Files that cannot be read; files and folders in which nothing can be changed at any depth.
    std::set<std::filesystem::path> unreadable;
    std::set<std::filesystem::path> unwritable;
    // What the next writes end with, one each; absent for one that works.
    std::deque<MaybeError> nextWrites;
    // The writes that worked, oldest first.
    std::vector<std::pair<std::filesystem::path, std::string>> writes;
    // The date that changed files get.
    WallTime now;

  private:
    [[nodiscard]] bool isWritable(std::filesystem::path path) const;
};

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

// A file browser that remembers what it was asked to show.
class SimulatedFileBrowser final : public FileBrowser {
  public:
    void reveal(const std::filesystem::path& file) override { revealed.push_back(file); }

    std::vector<std::filesystem::path> revealed;
};

// A defaults store in memory that remembers which keys were written.
class SimulatedDefaultsStore final : public DefaultsStore {
  public:
    using Values = std::map<std::string, DefaultsValue, std::less<>>;

    SimulatedDefaultsStore() = default;
    explicit SimulatedDefaultsStore(Values stored) : values(std::move(stored)) {}

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void set(std::string_view key, DefaultsValue value) override {
        values.insert_or_assign(std::string(key), std::move(value));
        writes.emplace_back(key);
    }
    void remove(std::string_view key) override {
        const auto found = values.find(key);
        if (found == values.end()) return;
        values.erase(found);
        writes.emplace_back(key);
    }

    Values values;
    std::vector<std::string> writes;  // the keys set, and those removed that were there, oldest first
};

}  // namespace platform::simulated
