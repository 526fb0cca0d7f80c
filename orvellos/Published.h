#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/Subscription.h"

namespace orvellos {

// Subscribers called in the order in which they subscribed. A subscriber may subscribe, cancel or notify
// again from inside its own call; one that cancels before its turn is not called.
template <typename... Arguments>
class Observers {
  public:
    using Callback = std::function<void(Arguments...)>;

    platform::Subscription subscribe(Callback callback) {
        const auto key = state_->nextKey++;
        state_->callbacks.emplace(key, std::move(callback));
        return platform::Subscription([weak = std::weak_ptr(state_), key] {
            if (auto state = weak.lock()) state->callbacks.erase(key);
        });
    }

    void notify(Arguments... arguments) const {
        const auto state = state_;
        const auto end = state->nextKey;
        for (auto entry = state->callbacks.begin(); entry != state->callbacks.end() && entry->first < end;) {
            const auto key = entry->first;
            const auto callback = entry->second;
            callback(arguments...);
            entry = state->callbacks.upper_bound(key);
        }
    }

  private:
    struct State {
        std::map<unsigned long, Callback> callbacks;
        unsigned long nextKey = 0;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

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
