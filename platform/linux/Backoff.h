#pragma once

#include <algorithm>
#include <utility>

#include "platform/RunLoop.h"

namespace platform {

// The pauses before the next try of an operation that may fail for long: each twice the one before, up to a
// longest.
class Backoff {
  public:
    Backoff(Duration first, Duration longest) : first_(first), longest_(longest), next_(first) {}

    Duration next() { return std::exchange(next_, std::min(2 * next_, longest_)); }
    // To be called when a try has succeeded.
    void reset() { next_ = first_; }

  private:
    Duration first_;
    Duration longest_;
    Duration next_;
};

}  // namespace platform
