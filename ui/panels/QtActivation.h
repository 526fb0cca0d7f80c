#pragma once

#include <functional>
#include <utility>

#include "platform/Panels.h"
#include "platform/Windows.h"

namespace ui {

// X11 knows no policy: it is kept for who asks. The application is activated by its panel that is used.
class QtActivation final : public platform::ApplicationActivation {
  public:
    // `bringToUser` takes a window that is on the screen to where the user is.
    explicit QtActivation(std::function<void(platform::WindowNumber)> bringToUser)
        : bringToUser_(std::move(bringToUser)) {}

    [[nodiscard]] platform::ActivationPolicy policy() const override { return policy_; }
    void setPolicy(platform::ActivationPolicy policy) override { policy_ = policy; }
    void activate() override;

  private:
    platform::ActivationPolicy policy_ = platform::ActivationPolicy::Accessory;
    std::function<void(platform::WindowNumber)> bringToUser_;
};

}  // namespace ui
