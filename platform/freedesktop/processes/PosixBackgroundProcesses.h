#pragma once

#include <sys/types.h>

#include <map>

#include "platform/Processes.h"
#include "platform/freedesktop/files/FileDescriptor.h"
#include "platform/freedesktop/processes/Spawn.h"
#include "platform/linux/DescriptorWatcher.h"

namespace platform::freedesktop {

// Starts programs with posix_spawn, as `locate` finds them, and follows them from the main loop.
class PosixBackgroundProcesses final : public BackgroundProcesses {
  public:
    PosixBackgroundProcesses(DescriptorWatcher& watcher, LocateProgram locate)
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
    LocateProgram locate_;
    std::map<pid_t, Child> children_;
};

}  // namespace platform::freedesktop
