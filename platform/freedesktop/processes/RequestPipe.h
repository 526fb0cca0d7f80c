#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/files/FileDescriptor.h"
#include "platform/linux/DescriptorWatcher.h"

namespace platform::freedesktop {

// A named pipe in a folder of the user's, by which one process asks another of the same user for the one
// thing that the name stands for. Nobody waits: a request that nobody listens for is lost. What is there
// under the name and is not this user's own pipe, closed to others, is left alone.
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

}  // namespace platform::freedesktop
