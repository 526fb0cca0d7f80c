#pragma once

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

#include "platform/Files.h"

namespace platform::freedesktop {

// The system calls whose failures lose data, with the meaning of their namesakes in POSIX. A test puts its
// own in their place.
struct FileCalls {
    std::function<int(const char*, int, mode_t)> open = [](const char* path, int flags, mode_t mode) {
        return ::open(path, flags, mode);
    };
    std::function<ssize_t(int, const void*, std::size_t)> write = ::write;
    std::function<int(int)> fsync = ::fsync;
    std::function<int(const char*, const char*)> rename = ::rename;
    // Fails with EEXIST when the target exists; with ENOSYS or EINVAL where that cannot be had in one step.
    std::function<int(const char*, const char*)> renameNoReplace = [](const char* from, const char* to) {
        return ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
    };
    std::function<int(int, gid_t)> changeGroup = [](int file, gid_t group) {
        return ::fchown(file, static_cast<uid_t>(-1), group);
    };
};

// The files of this machine. A failure reads as the operation and the system's words for its reason.
class PosixFileSystem final : public FileSystem {
  public:
    explicit PosixFileSystem(FileCalls calls = {}) : calls_(std::move(calls)) {}

    [[nodiscard]] bool exists(const std::filesystem::path& path) const override;
    [[nodiscard]] Result<std::string> read(const std::filesystem::path& path) const override;
    // A new file can be read and written by its owner alone.
    [[nodiscard]] MaybeError writeAtomically(const std::filesystem::path& path,
                                             std::string_view bytes) override;
    [[nodiscard]] MaybeError writeNew(const std::filesystem::path& path, std::string_view bytes) override;
    // Between file systems a file is copied.
    [[nodiscard]] MaybeError move(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override;
    // A folder that is made belongs to its owner alone, as the XDG Base Directory Specification asks.
    [[nodiscard]] MaybeError createFolders(const std::filesystem::path& folder) override;
    [[nodiscard]] std::optional<WallTime> modificationDate(const std::filesystem::path& path) const override;

  private:
    // Who may use a file besides its owner. A new file has the group that the system gives it.
    struct Access {
        mode_t permissions = 0;
        std::optional<gid_t> group = std::nullopt;
    };
    using Rename = std::function<int(const char* from, const char* to)>;

    [[nodiscard]] static Result<Access> accessOf(const std::filesystem::path& path);
    // Writes a file beside the target and then gives it the target's name with `rename`.
    [[nodiscard]] MaybeError publish(const std::filesystem::path& target, std::string_view bytes,
                                     const Access& access, const Rename& rename) const;
    // A new file in the folder under a name nobody has, which `path` receives; -1 with errno on failure.
    [[nodiscard]] int createTemporary(const std::filesystem::path& folder, std::filesystem::path& path) const;
    [[nodiscard]] MaybeError writeWhole(int file, std::string_view bytes) const;
    [[nodiscard]] MaybeError fillTemporary(int file, std::string_view bytes, const Access& access) const;
    [[nodiscard]] MaybeError sync(int file) const;
    // Renames to a name that nobody has, in one step or two; -1 with errno on failure.
    [[nodiscard]] int renameToNewName(const char* from, const char* to) const;
    [[nodiscard]] MaybeError moveByCopying(const std::filesystem::path& from,
                                           const std::filesystem::path& to);

    FileCalls calls_;
};

}  // namespace platform::freedesktop
