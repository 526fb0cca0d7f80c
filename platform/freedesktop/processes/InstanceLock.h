#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Processes.h"
#include "platform/freedesktop/files/FileDescriptor.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/linux/DescriptorWatcher.h"

namespace platform::freedesktop {

// A named pipe in a folder of the user's, by which one process asks another of the same user for the one
// thing that the name stands for. Nobody waits: a request that nobody listens for is lost. A file under the
// name that is not this user's own pipe, closed to others, is left alone.
class RequestPipe {
  public:
    RequestPipe(FileDescriptor folder, std::string name)
        : folder_(std::move(folder)), name_(std::move(name)) {}

    void send() const;
    // Makes the pipe and calls `handler` at a later turn of the main loop, once for requests that come
    // together. One handler at a time.
    Subscription onRequest(DescriptorWatcher& descriptors, std::function<void()> handler);

  private:
    [[nodiscard]] FileDescriptor open(int access) const;

    FileDescriptor folder_;
    std::string name_;
    FileDescriptor pipe_;
};

// Knows whether another process runs this program on the same display: the one that holds the lock on a file
// in the user's runtime folder (XDG_RUNTIME_DIR), or else in a private folder under the temporary one. The
// kernel lets go of the lock when its holder ends, however it ends. Where there is no such file no other
// instance is ever known. One object a process: the lock is the process's.
class InstanceLock final : public RunningApplications {
  public:
    // `display` is the X display's name. Takes the lock if it is free.
    InstanceLock(std::string_view display, DescriptorWatcher& descriptors,
                 const Environment& environment = processEnvironment);

    [[nodiscard]] ProcessId currentProcess() const override;
    // The process that holds the lock, for this program's own identifier, and nothing for any other. A lock
    // that has become free is taken. A holder that this process cannot see, in a container, is process 0.
    [[nodiscard]] std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) override;
    // Takes the lock: this process is the instance then. True also where there is nothing to lock.
    [[nodiscard]] bool takeOver(ProcessId application) override;
    // Asks whichever process holds the lock, through a pipe beside it.
    void activate(ProcessId application) override;
    Subscription onActivated(std::function<void()> handler) override;

  private:
    [[nodiscard]] bool take();

    DescriptorWatcher& descriptors_;
    FileDescriptor file_;
    std::optional<RequestPipe> activation_;  // absent where there is nothing to lock
};

}  // namespace platform::freedesktop
