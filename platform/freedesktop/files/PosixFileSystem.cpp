#include "platform/freedesktop/files/PosixFileSystem.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <system_error>

#include "platform/freedesktop/files/FileDescriptor.h"

namespace platform::freedesktop {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = 64U << 20;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kPrivateFolder = 0700;
constexpr mode_t kPermissionBits = 0777;
constexpr int kMostLinks = 40;  // the kernel's own bound on a chain of symbolic links
constexpr int kMostTemporaryNames = 100;
constexpr std::string_view kTemporaryPrefix = ".orvello-";
constexpr std::string_view kTemporarySuffix = ".tmp";

Error failure(std::string_view operation, int code = errno) {
    return {fmt::format("{}: {}", operation, std::generic_category().message(code))};
}

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

// The permissions for a file whose group is not the intended one: its group may do no more than everybody.
mode_t withoutGroup(mode_t permissions) {
    const mode_t ofAll = (permissions & S_IRWXO) << 3;
    return (permissions & ~S_IRWXG) | (permissions & S_IRWXG & ofAll);
}

// The process that wrote a temporary file; absent when the name is not of that form.
std::optional<pid_t> writerOf(std::string_view name) {
    if (!name.starts_with(kTemporaryPrefix) || !name.ends_with(kTemporarySuffix)) return std::nullopt;
    name.remove_prefix(kTemporaryPrefix.size());
    pid_t writer = 0;
    const auto [end, error] = std::from_chars(name.begin(), name.end(), writer);
    if (error != std::errc() || *end != '-' || writer <= 0) return std::nullopt;
    return writer;
}

// Removes what writers left behind that were killed.
void removeAbandonedTemporaries(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const auto writer = writerOf(entry->path().filename().native());
        if (writer && ::kill(*writer, 0) != 0 && errno == ESRCH) ::unlink(entry->path().c_str());
    }
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
    return ::stat(path.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

Result<std::string> PosixFileSystem::read(const fs::path& path) const {
    // Not waiting, because opening a pipe would wait for its writer.
    const FileDescriptor file(
        retried([&] { return calls_.open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0); }));
    if (!file.isOpen()) return failure("open");
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) return failure("stat");
    if (S_ISDIR(status.st_mode)) return failure("read", EISDIR);
    if (!S_ISREG(status.st_mode)) return Error{"read: Not a regular file"};
    return readWhole(file.number(), static_cast<std::size_t>(status.st_size));
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

MaybeError PosixFileSystem::fillTemporary(int file, std::string_view bytes, const Access& access) const {
    if (auto error = writeWhole(file, bytes)) return error;
    const bool inGroup = !access.group || calls_.changeGroup(file, *access.group) == 0;
    const mode_t permissions = inGroup ? access.permissions : withoutGroup(access.permissions);
    if (permissions != kPrivateFile && ::fchmod(file, permissions) != 0) return failure("chmod");
    return sync(file);
}

int PosixFileSystem::createTemporary(const fs::path& folder, fs::path& path) const {
    int file = -1;
    for (int number = 0; number < kMostTemporaryNames; ++number) {
        path = folder / fmt::format("{}{}-{}{}", kTemporaryPrefix, ::getpid(), number, kTemporarySuffix);
        file = retried(
            [&] { return calls_.open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile); });
        if (file >= 0 || errno != EEXIST) break;
    }
    return file;
}

Result<PosixFileSystem::Access> PosixFileSystem::accessOf(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT) return Access{kPrivateFile, std::nullopt};
        return failure("stat");
    }
    if (S_ISDIR(status.st_mode)) return failure("open", EISDIR);
    if (!S_ISREG(status.st_mode)) return Error{"open: Not a regular file"};
    return Access{status.st_mode & kPermissionBits, status.st_gid};
}

MaybeError PosixFileSystem::writeAtomically(const fs::path& path, std::string_view bytes) {
    const auto target = linkTarget(path);
    if (!target) return target.error();
    const auto access = accessOf(target.value());
    if (!access) return access.error();
    return publish(target.value(), bytes, access.value(), calls_.rename);
}

MaybeError PosixFileSystem::writeNew(const fs::path& path, std::string_view bytes) {
    return publish(path, bytes, {kPrivateFile, std::nullopt},
                   [this](const char* from, const char* to) { return renameToNewName(from, to); });
}

MaybeError PosixFileSystem::publish(const fs::path& target, std::string_view bytes, const Access& access,
                                    const Rename& rename) const {
    if (target.empty()) return failure("open", ENOENT);
    const fs::path parent = target.parent_path();
    const fs::path folderPath = parent.empty() ? "." : parent;
    // Opened first, so that a folder that cannot be synced fails the write before anything has changed.
    const FileDescriptor folder(
        retried([&] { return calls_.open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); }));
    if (!folder.isOpen()) return failure("open");
    removeAbandonedTemporaries(folderPath);

    fs::path temporary;
    const FileDescriptor file(createTemporary(folderPath, temporary));
    if (!file.isOpen()) return failure("open");
    auto error = fillTemporary(file.number(), bytes, access);
    if (!error && rename(temporary.c_str(), target.c_str()) != 0) error = failure("rename");
    if (error) {
        ::unlink(temporary.c_str());
        return error;
    }
    // A file system that cannot sync folders says EINVAL.
    if (retried([&] { return calls_.fsync(folder.number()); }) != 0 && errno != EINVAL)
        return failure("fsync");
    return std::nullopt;
}

int PosixFileSystem::renameToNewName(const char* from, const char* to) const {
    if (calls_.renameNoReplace(from, to) == 0) return 0;
    struct stat status {};
    if ((errno != ENOSYS && errno != EINVAL) || ::lstat(from, &status) != 0) return -1;
    const bool isFolder = S_ISDIR(status.st_mode);
    if (!claimName(to, isFolder)) return -1;
    if (calls_.rename(from, to) == 0) return 0;
    const int code = errno;
    static_cast<void>(isFolder ? ::rmdir(to) : ::unlink(to));
    errno = code;
    return -1;
}

MaybeError PosixFileSystem::move(const fs::path& from, const fs::path& to) {
    const auto target = linkTarget(from);
    const auto& source =
        target ? target.value() : from;  // links in a circle stand for nothing but themselves
    if (renameToNewName(source.c_str(), to.c_str()) == 0) return std::nullopt;
    return errno == EXDEV ? moveByCopying(source, to) : failure("rename");
}

MaybeError PosixFileSystem::moveByCopying(const fs::path& from, const fs::path& to) {
    const auto content = read(from);
    if (!content) return content.error();
    if (auto error = writeNew(to, content.value())) return error;
    if (::unlink(from.c_str()) != 0) return failure("unlink");
    return std::nullopt;
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
