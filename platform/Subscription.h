#pragma once

#include <functional>
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

}  // namespace platform
