#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Result.h"
#include "platform/RunLoop.h"

namespace platform {

// Whole files by path. Every operation is synchronous; a failure is an error value, never an exception.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    // Whether a file or folder is there, symbolic links followed: a dangling link stands for nothing. What
    // cannot be told counts as there; reading it says why.
    [[nodiscard]] virtual bool exists(const std::filesystem::path& path) const = 0;
    // The whole content of a regular file. A file above 64 MiB is an error, as is anything that is no file.
    [[nodiscard]] virtual Result<std::string> read(const std::filesystem::path& path) const = 0;
    // Replaces the file as a whole and durably: a reader, or a crash, sees the old content or the new, never
    // a part. An existing file keeps its permissions; a symbolic link is followed. The folder must exist.
    [[nodiscard]] virtual MaybeError writeAtomically(const std::filesystem::path& path,
                                                     std::string_view bytes) = 0;
    // Writes a file that only its owner may use, as durably, under a name that nobody has, not even a link.
    [[nodiscard]] virtual MaybeError writeNew(const std::filesystem::path& path, std::string_view bytes) = 0;
    // Renames; fails when `to` exists. Of a symbolic link the file it stands for is moved, the link stays.
    [[nodiscard]] virtual MaybeError move(const std::filesystem::path& from,
                                          const std::filesystem::path& to) = 0;
    // Creates the folder and its missing parents; a folder that is already there is no error.
    [[nodiscard]] virtual MaybeError createFolders(const std::filesystem::path& folder) = 0;
    [[nodiscard]] virtual std::optional<WallTime> modificationDate(
        const std::filesystem::path& path) const = 0;
};

}  // namespace platform
