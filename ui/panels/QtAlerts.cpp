#include "ui/panels/QtAlerts.h"

#include <QApplication>
#include <QTimer>
#include <utility>

#include "ui/panels/QtPanel.h"

namespace ui {

void QtActivation::activate() {
    if (QApplication::activeWindow()) return;
    for (const auto* widget : QApplication::topLevelWidgets()) {
        const auto* panel = dynamic_cast<const QtPanel*>(widget);
        if (panel && panel->isVisible()) return focus_.bringToUser(panel->number());
    }
}

QtAlerts::~QtAlerts() {
    delete box_;
}

void QtAlerts::runModal(const platform::Alert& alert, std::function<void(std::size_t)> answered) {
    waiting_.push_back({alert, std::move(answered)});
    if (!box_) showNext();
}

void QtAlerts::showNext() {
    if (waiting_.empty()) return;
    auto next = std::move(waiting_.front());
    waiting_.pop_front();
    box_ = new AlertBox(next.alert, atoms_, [this, answered = std::move(next.answered)](std::size_t button) {
        box_.clear();
        answered(button);
        if (!box_) showNext();
    });
    box_->show();
    // By then the window manager has been asked to show it.
    QTimer::singleShot(
        0, box_, [this, box = box_.data()] { focus_.activate({static_cast<std::int64_t>(box->winId())}); });
}

}  // namespace ui
