#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Observers.h"

namespace orvellos {

using platform::Observers;

// A value whose assignments are announced. A subscription delivers the current value at once and then every
// value assigned, changed or not, on the assigning thread. When a subscriber assigns in turn, those after it
// get the newer value alone.
template <typename T>
class Published {
  public:
    Published() = default;
    explicit Published(T value) : value_(std::move(value)) {}

    [[nodiscard]] const T& get() const { return value_; }
    void set(T value) {
        value_ = std::move(value);
        const T delivered = value_;
        observers_.notify(delivered, ++*assignments_);
    }
    platform::Subscription subscribe(std::function<void(const T&)> callback) {
        callback(value_);
        return observers_.subscribe([callback = std::move(callback), newest = assignments_](
                                        const T& value, std::uint64_t assignment) {
            if (assignment == *newest) callback(value);
        });
    }

  private:
    T value_{};
    Observers<const T&, std::uint64_t> observers_;
    std::shared_ptr<std::uint64_t> assignments_ = std::make_shared<std::uint64_t>(0);  // counted
};

}  // namespace orvellos
