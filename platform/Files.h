#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

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

// The desktop's file browser.
class FileBrowser {
  public:
    virtual ~FileBrowser() = default;

    // Shows the file, selected, in its folder. Returns at once; a desktop without a file browser does
    // nothing.
    virtual void reveal(const std::filesystem::path& file) = 0;
};

struct DefaultsData {
    std::string bytes;
    bool operator==(const DefaultsData&) const = default;
};
using DefaultsDictionary = std::map<std::string, double>;
using DefaultsValue = std::variant<bool, std::int64_t, double, std::string, DefaultsData, DefaultsDictionary>;

// The user's settings by key, each value with its type. Every change is written before the call returns; a
// value that cannot be written stays in memory for this run.
class DefaultsStore {
  public:
    virtual ~DefaultsStore() = default;

    [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, DefaultsValue value) = 0;
    virtual void remove(std::string_view key) = 0;
};

}  // namespace platform
