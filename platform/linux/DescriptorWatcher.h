#pragma once

#include <functional>

#include "platform/Observers.h"

namespace platform {

// Runs code of the platform layer on the main thread when a file descriptor is ready.
class DescriptorWatcher {
  public:
    virtual ~DescriptorWatcher() = default;

    // `action` runs at every turn of the main loop in which `descriptor` can be read (or written). The
    // descriptor stays the caller's and outlives the subscription, which `action` itself may cancel.
    virtual Subscription watchReadable(int descriptor, std::function<void()> action) = 0;
    virtual Subscription watchWritable(int descriptor, std::function<void()> action) = 0;
};

}  // namespace platform
