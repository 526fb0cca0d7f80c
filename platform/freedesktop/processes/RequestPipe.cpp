#include "platform/freedesktop/processes/RequestPipe.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>

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

}  // namespace platform::freedesktop
