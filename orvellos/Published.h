#pragma once

#include <functional>
#include <utility>

#include "platform/Observers.h"
#include "platform/Subscription.h"

namespace orvellos {

using platform::Observers;

// A value whose assignments are announced. A subscription delivers the current value at once and then every
// value assigned, changed or not, on the assigning thread.
template <typename T>
class Published {
  public:
    Published() = default;
    explicit Published(T value) : value_(std::move(value)) {}

    [[nodiscard]] const T& get() const { return value_; }
    void set(T value) {
        value_ = std::move(value);
        const T delivered = value_;
        observers_.notify(delivered);
    }
    platform::Subscription subscribe(std::function<void(const T&)> callback) {
        callback(value_);
        return observers_.subscribe(std::move(callback));
    }

  private:
    T value_{};
    Observers<const T&> observers_;
};

}  // namespace orvellos
