#include "platform/freedesktop/PosixFileSystem.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace platform::freedesktop {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = 64U << 20;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kPrivateFolder = 0700;
constexpr mode_t kPermissionBits = 0777;
constexpr int kMostLinks = 40;  // the kernel's own bound on a chain of symbolic links
constexpr int kMostTemporaryNames = 100;

Error failure(std::string_view operation, int code = errno) {
    return {fmt::format("{}: {}", operation, std::generic_category().message(code))};
}

// Closes what it holds.
class FileDescriptor {
  public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (isOpen()) ::close(descriptor_);
    }
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }

  private:
    int descriptor_;
};

// Makes the call again for as long as a signal interrupts it.
template <typename Call>
auto retried(const Call& call) {
    auto answer = call();
    while (answer < 0 && errno == EINTR) answer = call();
    return answer;
}

// The file that the path stands for once its symbolic links are followed; it need not exist.
Result<fs::path> linkTarget(fs::path path) {
    for (int links = 0; links <= kMostLinks; ++links) {
        std::error_code error;
        const auto target = fs::read_symlink(path, error);
        if (error) return path;
        path = path.parent_path() / target;
    }
    return failure("open", ELOOP);
}

// The permissions to give the file that will be at `path`.
Result<mode_t> permissionsFor(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT) return kPrivateFile;
        return failure("stat");
    }
    if (S_ISDIR(status.st_mode)) return failure("open", EISDIR);
    if (!S_ISREG(status.st_mode)) return Error{"open: Not a regular file"};
    return status.st_mode & kPermissionBits;
}

// Takes a name that nobody has with an empty file or folder, which a rename may then replace: so a file
// system without a rename of its own that never replaces still cannot lose what has the name.
bool claimName(const fs::path& path, bool asFolder) {
    if (asFolder) return ::mkdir(path.c_str(), kPrivateFolder) == 0;
    return FileDescriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile))
        .isOpen();
}

Result<std::string> readWhole(int file, std::size_t expected) {
    std::string content(std::min(expected, kLargestFile) + 1, '\0');
    std::size_t used = 0;
    while (true) {
        const auto count =
            retried([&] { return ::read(file, content.data() + used, content.size() - used); });
        if (count < 0) return failure("read");
        used += static_cast<std::size_t>(count);
        if (used > kLargestFile) return failure("read", EFBIG);
        if (count == 0) break;
        if (used == content.size()) content.resize(std::min(2 * used, kLargestFile + 1));
    }
    content.resize(used);
    return content;
}

}  // namespace

bool PosixFileSystem::exists(const fs::path& path) const {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

Result<std::string> PosixFileSystem::read(const fs::path& path) const {
    // Not waiting, because opening a pipe would wait for its writer.
    const FileDescriptor file(
        retried([&] { return calls_.open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0); }));
    if (!file.isOpen()) return failure("open");
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return failure("stat");
    if (S_ISDIR(status.st_mode)) return failure("read", EISDIR);
    if (!S_ISREG(status.st_mode)) return Error{"read: Not a regular file"};
    return readWhole(file.get(), static_cast<std::size_t>(status.st_size));
}

MaybeError PosixFileSystem::writeWhole(int file, std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto count = retried([&] { return calls_.write(file, bytes.data(), bytes.size()); });
        if (count < 0) return failure("write");
        if (count == 0) return failure("write", EIO);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

MaybeError PosixFileSystem::sync(int file) const {
    if (retried([&] { return calls_.fsync(file); }) != 0) return failure("fsync");
    return std::nullopt;
}

MaybeError PosixFileSystem::fillTemporary(int file, std::string_view bytes, mode_t permissions) const {
    if (auto error = writeWhole(file, bytes)) return error;
    if (permissions != kPrivateFile && ::fchmod(file, permissions) != 0) return failure("chmod");
    return sync(file);
}

int PosixFileSystem::createTemporary(const fs::path& folder, fs::path& path) const {
    int file = -1;
    for (int number = 0; number < kMostTemporaryNames; ++number) {
        path = folder / fmt::format(".orvello-{}-{}.tmp", ::getpid(), number);
        file = retried(
            [&] { return calls_.open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile); });
        if (file >= 0 || errno != EEXIST) break;
    }
    return file;
}

MaybeError PosixFileSystem::writeAtomically(const fs::path& path, std::string_view bytes) {
    const auto target = linkTarget(path);
    if (!target) return target.error();
    const auto permissions = permissionsFor(target.value());
    if (!permissions) return permissions.error();
    const fs::path parent = target.value().parent_path();
    const fs::path folderPath = parent.empty() ? "." : parent;
    // Opened first, so that a folder that cannot be synced fails the write before anything has changed.
    const FileDescriptor folder(
        retried([&] { return calls_.open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); }));
    if (!folder.isOpen()) return failure("open");

    fs::path temporary;
    const FileDescriptor file(createTemporary(folderPath, temporary));
    if (!file.isOpen()) return failure("open");
    auto error = fillTemporary(file.get(), bytes, permissions.value());
    if (!error && calls_.rename(temporary.c_str(), target.value().c_str()) != 0) error = failure("rename");
    if (error) {
        ::unlink(temporary.c_str());
        return error;
    }
    // A file system that cannot sync folders says EINVAL.
    if (retried([&] { return calls_.fsync(folder.get()); }) != 0 && errno != EINVAL) return failure("fsync");
    return std::nullopt;
}

MaybeError PosixFileSystem::move(const fs::path& from, const fs::path& to) {
    if (calls_.renameNoReplace(from.c_str(), to.c_str()) == 0) return std::nullopt;
    if (errno != ENOSYS && errno != EINVAL) return failure("rename");
    struct stat status {};
    if (::lstat(from.c_str(), &status) != 0) return failure("rename");
    const bool isFolder = S_ISDIR(status.st_mode);
    if (!claimName(to, isFolder)) return failure("rename");
    if (calls_.rename(from.c_str(), to.c_str()) == 0) return std::nullopt;
    auto error = failure("rename");
    static_cast<void>(isFolder ? ::rmdir(to.c_str()) : ::unlink(to.c_str()));
    return error;
}

MaybeError PosixFileSystem::createFolders(const fs::path& folder) {
    fs::path made;
    std::error_code unknown;
    for (const auto& part : folder) {
        made /= part;
        if (::mkdir(made.c_str(), kPrivateFolder) == 0) continue;
        const int code = errno;
        if (!fs::is_directory(made, unknown)) return failure("mkdir", code == EEXIST ? ENOTDIR : code);
    }
    return std::nullopt;
}

std::optional<WallTime> PosixFileSystem::modificationDate(const fs::path& path) const {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return WallTime(std::chrono::seconds(status.st_mtim.tv_sec) +
                    std::chrono::nanoseconds(status.st_mtim.tv_nsec));
}

}  // namespace platform::freedesktop
