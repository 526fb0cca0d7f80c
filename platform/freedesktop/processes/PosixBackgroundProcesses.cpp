#include "platform/freedesktop/processes/PosixBackgroundProcesses.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/freedesktop/processes/Spawn.h"

namespace platform::freedesktop {

namespace {

std::string textOf(int error) {
    return std::generic_category().message(error);
}

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

// Absent, with errno set, when there are too many open files.
std::optional<Pipe> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return std::nullopt;
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// False when there is no more for now; then the program has closed its end, or nothing is there yet.
bool readInto(std::string& text, int end, std::size_t most) {
    std::array<char, 4096> bytes{};
    const auto count = ::read(end, bytes.data(), bytes.size());
    if (count <= 0) return count < 0 && errno == EINTR;
    text.append(bytes.data(), std::min(static_cast<std::size_t>(count), most - text.size()));
    return true;
}

}  // namespace

std::optional<std::string> PosixBackgroundProcesses::start(const std::string& program,
                                                           std::span<const std::string> arguments,
                                                           std::function<void(const Ended&)> ended) {
    auto output = makePipe();
    auto error = makePipe();
    if (!output || !error) return textOf(errno);
    const auto spawned = spawn(locate_(program), arguments,
                               {.output = output->writeEnd.number(), .error = error->writeEnd.number()});
    if (spawned.error != 0) return textOf(spawned.error);
    const auto process = spawned.process;
    auto& child = children_[process];
    child.handle = FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    child.ended = std::move(ended);
    follow(child.output, std::move(output->readEnd), kMostStandardOutput);
    follow(child.error, std::move(error->readEnd), kMostStandardError);
    child.end = watcher_.watchReadable(child.handle.number(), [this, process] { finish(process); });
    return std::nullopt;
}

void PosixBackgroundProcesses::follow(Stream& stream, FileDescriptor end, std::size_t most) {
    stream.end = std::move(end);
    stream.most = most;
    stream.readable = watcher_.watchReadable(stream.end.number(), [&stream] {
        if (!readInto(stream.text, stream.end.number(), stream.most)) stream.readable.cancel();
    });
}

void PosixBackgroundProcesses::finish(pid_t process) {
    auto extracted = children_.extract(process);
    auto& child = extracted.mapped();
    for (auto* stream : {&child.output, &child.error})
        while (readInto(stream->text, stream->end.number(), stream->most)) {
        }
    child.ended({exitStatusOf(process), child.error.text, child.output.text});
}

}  // namespace platform::freedesktop
