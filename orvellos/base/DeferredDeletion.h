#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/RunLoop.h"

namespace orvellos {

// Destroys objects at a later turn of the main loop, when none of their own code runs any more.
template <typename Object>
class DeferredDeletion {
  public:
    explicit DeferredDeletion(platform::RunLoop& runLoop) : runLoop_(runLoop) {}

    void add(std::unique_ptr<Object> object) {
        objects_.push_back(std::move(object));
        deletion_ = runLoop_.after(platform::Duration::zero(), [this] { objects_.clear(); });
    }

  private:
    platform::RunLoop& runLoop_;
    std::vector<std::unique_ptr<Object>> objects_;
    platform::Timer deletion_;
};

}  // namespace orvellos
