#include "platform/freedesktop/processes/InstanceLock.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <array>
#include <string>

#include "platform/freedesktop/files/Quoting.h"

namespace platform::freedesktop {

namespace {

constexpr mode_t kOthers = 0077;
// The XDG Base Directory Specification lets runtime files be cleaned up that do not have the sticky bit.
constexpr mode_t kPipe = 01600;

}  // namespace

FileDescriptor RequestPipe::open(int access) const {
    FileDescriptor pipe(
        ::openat(folder_.number(), name_.c_str(), access | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    const bool isOurs = ::fstat(pipe.number(), &status) == 0 && S_ISFIFO(status.st_mode) &&
                        status.st_uid == ::geteuid() && (status.st_mode & kOthers) == 0;
    return isOurs ? std::move(pipe) : FileDescriptor();
}

// Without a reader the pipe cannot be opened.
void RequestPipe::send() const {
    const auto pipe = open(O_WRONLY);
    if (pipe.isOpen()) (void)!::write(pipe.number(), "", 1);
}

// Held open for writing, too: else it would count as readable from the first writer's end on.
Subscription RequestPipe::onRequest(DescriptorWatcher& descriptors, std::function<void()> handler) {
    (void)::mkfifoat(folder_.number(), name_.c_str(), kPipe);
    pipe_ = open(O_RDWR);
    if (!pipe_.isOpen()) return {};
    return descriptors.watchReadable(pipe_.number(), [this, handler = std::move(handler)] {
        std::array<char, 64> requests{};
        if (::read(pipe_.number(), requests.data(), requests.size()) > 0) handler();
    });
}

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBundleIdentifier = "org.norvath.orvello";
constexpr mode_t kPrivateFolder = 0700;
// The XDG Base Directory Specification lets runtime files be cleaned up that do not have the sticky bit.
constexpr mode_t kLockFile = 01600;

// The name for the display, whichever of its screens is meant, without a slash.
std::string nameFor(std::string_view display) {
    const auto dot = display.rfind('.');
    if (dot != std::string_view::npos && display.find(':') < dot) display = display.substr(0, dot);
    auto name = percentEncoded(display);
    for (auto slash = name.find('/'); slash != std::string::npos; slash = name.find('/', slash))
        name.replace(slash, 1, "%2F");
    return "orvello-" + name;
}

FileDescriptor openRuntimeFolder(const Environment& environment) {
    const auto path = environment("XDG_RUNTIME_DIR");
    if (!path || !path->starts_with('/')) return {};
    FileDescriptor folder(::open(path->c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    const bool isOurs = ::fstat(folder.number(), &status) == 0 && status.st_uid == ::geteuid();
    return isOurs ? std::move(folder) : FileDescriptor();
}

// Under the temporary folder anybody may have put something in our place.
FileDescriptor openPrivateFolder(const Environment& environment) {
    const auto path = XdgFolders(environment).temporary() / fmt::format("orvello-{}", ::geteuid());
    (void)::mkdir(path.c_str(), kPrivateFolder);
    FileDescriptor folder(::open(path.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {};
    const bool isPrivate = ::fstat(folder.number(), &status) == 0 && status.st_uid == ::geteuid() &&
                           (status.st_mode & kOthers) == 0;
    return isPrivate ? std::move(folder) : FileDescriptor();
}

FileDescriptor openLockFile(const FileDescriptor& folder, const std::string& name) {
    if (!folder.isOpen()) return {};
    FileDescriptor file(::openat(folder.number(), name.c_str(),
                                 O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kLockFile));
    struct stat status {};
    const bool isFile = ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? std::move(file) : FileDescriptor();
}

struct flock wholeFile() {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

}  // namespace

InstanceLock::InstanceLock(std::string_view display, DescriptorWatcher& descriptors,
                           const Environment& environment)
    : descriptors_(descriptors) {
    const auto name = nameFor(display);
    for (const auto open : {openRuntimeFolder, openPrivateFolder}) {
        auto folder = open(environment);
        file_ = openLockFile(folder, name + ".lock");
        if (!file_.isOpen()) continue;
        activation_.emplace(std::move(folder), name + ".activate");
        break;
    }
    (void)take();
}

ProcessId InstanceLock::currentProcess() const {
    return ::getpid();
}

std::vector<ProcessId> InstanceLock::withBundleIdentifier(std::string_view identifier) {
    if (identifier != kBundleIdentifier || take()) return {};
    auto lock = wholeFile();
    // The kernel knows the holder; the number in the file is for people.
    if (::fcntl(file_.number(), F_GETLK, &lock) != 0) return {};
    if (lock.l_type == F_UNLCK) return withBundleIdentifier(identifier);  // let go of just now
    return {lock.l_pid};
}

bool InstanceLock::takeOver(ProcessId /*application*/) {
    return take();
}

void InstanceLock::activate(ProcessId /*application*/) {
    if (activation_) activation_->send();
}

Subscription InstanceLock::onActivated(std::function<void()> handler) {
    return activation_ ? activation_->onRequest(descriptors_, std::move(handler)) : Subscription();
}

bool InstanceLock::take() {
    if (!file_.isOpen()) return true;
    auto lock = wholeFile();
    if (::fcntl(file_.number(), F_SETLK, &lock) != 0) return errno != EAGAIN && errno != EACCES;
    const auto process = fmt::format("{}\n", ::getpid());
    if (::ftruncate(file_.number(), 0) == 0)
        (void)!::pwrite(file_.number(), process.data(), process.size(), 0);
    return true;
}

}  // namespace platform::freedesktop
