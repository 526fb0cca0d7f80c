#include "platform/freedesktop/PosixBackgroundProcesses.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/freedesktop/Spawn.h"

namespace platform::freedesktop {

namespace {

std::string textOf(int error) {
    return std::generic_category().message(error);
}

}  // namespace

std::optional<std::string> PosixBackgroundProcesses::start(const std::string& program,
                                                           std::span<const std::string> arguments,
                                                           std::function<void(const Ended&)> ended) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return textOf(errno);
    FileDescriptor output(pipe[0]);
    const FileDescriptor input(pipe[1]);
    const auto spawned = spawn(locate_(program), arguments, input.number());
    if (spawned.error != 0) return textOf(spawned.error);
    const auto process = spawned.process;
    auto& child = children_[process];
    child.handle = FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    child.output = std::move(output);
    child.ended = std::move(ended);
    child.readable = watcher_.watchReadable(child.output.number(), [this, &child] {
        if (!read(child)) child.readable.cancel();
    });
    child.end = watcher_.watchReadable(child.handle.number(), [this, process] { finish(process); });
    return std::nullopt;
}

bool PosixBackgroundProcesses::read(Child& child) {
    std::array<char, 512> bytes{};
    const auto count = ::read(child.output.number(), bytes.data(), bytes.size());
    if (count <= 0) return count < 0 && errno == EINTR;
    const auto room = kMostStandardError - child.standardError.size();
    child.standardError.append(bytes.data(), std::min(static_cast<std::size_t>(count), room));
    return true;
}

void PosixBackgroundProcesses::finish(pid_t process) {
    auto extracted = children_.extract(process);
    auto& child = extracted.mapped();
    while (read(child)) {
    }
    child.ended({exitStatusOf(process), child.standardError});
}

}  // namespace platform::freedesktop
