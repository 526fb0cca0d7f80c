#pragma once

#include <QPointer>
#include <deque>
#include <functional>

#include "platform/Panels.h"
#include "platform/Windows.h"
#include "ui/panels/AlertBox.h"

namespace ui {

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
