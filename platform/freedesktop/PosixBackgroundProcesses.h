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

    // At most kMostStandardError bytes of what a program says are kept.
    [[nodiscard]] std::optional<std::string> start(const std::string& program,
                                                   std::span<const std::string> arguments,
                                                   std::function<void(const Ended&)> ended) override;
    static constexpr std::size_t kMostStandardError = 4096;

  private:
    struct Child {
        FileDescriptor handle;
        FileDescriptor output;
        std::string standardError;
        std::function<void(const Ended&)> ended;
        Subscription readable;
        Subscription end;
    };

    // False when there is no more for now; then the program has closed its end, or nothing is there yet.
    bool read(Child& child);
    void finish(pid_t process);

    DescriptorWatcher& watcher_;
    Locate locate_;
    std::map<pid_t, Child> children_;
};

}  // namespace platform::freedesktop
