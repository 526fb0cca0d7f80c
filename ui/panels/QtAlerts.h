#pragma once

#include <QPointer>
#include <deque>
#include <functional>
#include <utility>

#include "platform/Panels.h"
#include "ui/panels/AlertBox.h"

namespace ui {

// Only remembers the policy, which X11 does not have. Activating the application brings one of its panels to
// the user, unless one of its windows is active.
class QtActivation final : public platform::ApplicationActivation {
  public:
    explicit QtActivation(const platform::WindowFocus& focus) : focus_(focus) {}

    [[nodiscard]] platform::ActivationPolicy policy() const override { return policy_; }
    void setPolicy(platform::ActivationPolicy policy) override { policy_ = policy; }
    void activate() override;

  private:
    const platform::WindowFocus& focus_;
    platform::ActivationPolicy policy_ = platform::ActivationPolicy::Accessory;
};

// Alerts, one after the other.
class QtAlerts final : public platform::Alerts {
  public:
    QtAlerts(const platform::x11::Atoms& atoms, const platform::WindowFocus& focus)
        : atoms_(atoms), focus_(focus) {}
    ~QtAlerts() override;

    void runModal(const platform::Alert& alert, std::function<void(std::size_t)> answered) override;

  private:
    struct Waiting {
        platform::Alert alert;
        std::function<void(std::size_t)> answered;
    };
    void showNext();

    const platform::x11::Atoms& atoms_;
    const platform::WindowFocus& focus_;
    std::deque<Waiting> waiting_;
    QPointer<AlertBox> box_;
};

}  // namespace ui
