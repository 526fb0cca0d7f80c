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

}  // namespace platform::simulated
