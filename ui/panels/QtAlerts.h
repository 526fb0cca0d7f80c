#pragma once

#include <QPointer>
#include <deque>
#include <functional>
#include <utility>

#include "platform/Panels.h"
#include "platform/Windows.h"
#include "ui/panels/AlertBox.h"

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

// Alerts, one after the other.
class QtAlerts final : public platform::Alerts {
  public:
    // `activate` gives a window that is on the screen the keyboard.
    explicit QtAlerts(std::function<void(platform::WindowNumber)> activate)
        : activate_(std::move(activate)) {}
    ~QtAlerts() override;

    void runModal(const platform::Alert& alert, std::function<void(std::size_t)> answered) override;

  private:
    struct Waiting {
        platform::Alert alert;
        std::function<void(std::size_t)> answered;
    };
    void showNext();

    std::function<void(platform::WindowNumber)> activate_;
    std::deque<Waiting> waiting_;
    QPointer<AlertBox> box_;
};

}  // namespace ui
