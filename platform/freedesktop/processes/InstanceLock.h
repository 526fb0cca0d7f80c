#pragma once

#include <optional>
#include <string_view>

#include "platform/Processes.h"
#include "platform/freedesktop/files/FileDescriptor.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/processes/RequestPipe.h"

namespace platform::freedesktop {

// Knows whether another process runs this program on the same display: the one that holds the lock on a file
// in the user's runtime folder (XDG_RUNTIME_DIR), or else in a private folder under the temporary one. The
// kernel lets go of the lock when its holder ends, however it ends. Where there is no such file no other
// instance is ever known. One object a process: the lock is the process's.
class InstanceLock final : public RunningApplications {
  public:
    // `display` is the X display's name. Takes the lock if it is free. The watcher outlives it.
    InstanceLock(std::string_view display, DescriptorWatcher& descriptors,
                 const Environment& environment = processEnvironment);

    [[nodiscard]] ProcessId currentProcess() const override;
    // The process that holds the lock, for this program's own identifier, and nothing for any other. A lock
    // that has become free is taken. A holder that this process cannot see, in a container, is process 0.
    [[nodiscard]] std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) const override;
    // Whether the lock could be taken over: this process is the instance now.
    [[nodiscard]] bool hasTerminated(ProcessId application) const override;
    // Asks whichever process holds the lock, through a pipe beside it.
    void activate(ProcessId application) override;
    Subscription onActivated(std::function<void()> handler) override;

  private:
    // True also where there is nothing to lock.
    [[nodiscard]] bool take() const;

    DescriptorWatcher& descriptors_;
    FileDescriptor file_;
    std::optional<RequestPipe> activation_;  // absent where there is nothing to lock
};

}  // namespace platform::freedesktop
