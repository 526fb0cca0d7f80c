#pragma once

#include <sys/types.h>

#include <map>

#include "platform/ChildProcesses.h"
#include "platform/DescriptorWatcher.h"
#include "platform/freedesktop/FileDescriptor.h"

namespace platform::freedesktop {

// Starts programs with posix_spawn and follows them from the main loop. A program is started from the file
// that `locate` gives for the path under which the application knows it.
class PosixBackgroundProcesses final : public BackgroundProcesses {
  public:
    using Locate = std::function<std::string(const std::string& program)>;

    PosixBackgroundProcesses(DescriptorWatcher& watcher, Locate locate)
        : watcher_(watcher), locate_(std::move(locate)) {}

    // At most so many bytes of what a program says are kept.
    [[nodiscard]] std::optional<std::string> start(const std::string& program,
                                                   std::span<const std::string> arguments,
                                                   std::function<void(const Ended&)> ended) override;
    static constexpr std::size_t kMostStandardError = 4096;
    static constexpr std::size_t kMostStandardOutput = 262'144;

  private:
    // What a program says on one of its standard streams.
    struct Stream {
        FileDescriptor end;
        std::size_t most = 0;
        std::string text;
        Subscription readable;
    };
    struct Child {
        FileDescriptor handle;
        Stream output;
        Stream error;
        std::function<void(const Ended&)> ended;
        Subscription end;
    };

    void follow(Stream& stream, FileDescriptor end, std::size_t most);
    void finish(pid_t process);

    DescriptorWatcher& watcher_;
    Locate locate_;
    std::map<pid_t, Child> children_;
};

}  // namespace platform::freedesktop
