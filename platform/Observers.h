#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace platform {

// The right to keep being called: what it stands for ends when it is destroyed, cancelled or assigned over.
class [[nodiscard]] Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { cancel(); }

    void cancel() {
        if (auto run = std::exchange(cancel_, nullptr)) run();
    }
    // Whether there is still something to cancel. A one-shot timer that has fired stays active until it is
    // cancelled.
    [[nodiscard]] bool isActive() const { return cancel_ != nullptr; }

  private:
    std::function<void()> cancel_;
};

// Subscribers called in the order in which they subscribed. A subscriber may subscribe, cancel or notify
// again from inside its own call; one that cancels before its turn is not called.
template <typename... Arguments>
class Observers {
  public:
    using Callback = std::function<void(Arguments...)>;

    Subscription subscribe(Callback callback) {
        const auto key = state_->nextKey++;
        state_->callbacks.emplace(key, std::move(callback));
        return Subscription([weak = std::weak_ptr(state_), key] {
            if (auto state = weak.lock()) state->callbacks.erase(key);
        });
    }

    [[nodiscard]] bool isEmpty() const { return state_->callbacks.empty(); }

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

}  // namespace platform
