#include "ui/QtAlerts.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QTimer>
#include <utility>

#include "ui/PlainText.h"

namespace ui {

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
    const auto& alert = next.alert;
    box_ = new QMessageBox;
    box_->setAttribute(Qt::WA_DeleteOnClose);
    box_->setWindowFlag(Qt::WindowStaysOnTopHint);
    box_->setWindowTitle(QStringLiteral("orvellos"));
    box_->setIcon(QMessageBox::Warning);
    box_->setTextFormat(Qt::PlainText);
    box_->setText(toQString(alert.message));
    box_->setInformativeText(toQString(alert.informativeText));
    std::vector<QAbstractButton*> buttons;
    for (const auto& title : alert.buttons) {
        const auto role =
            buttons.size() + 1 < alert.buttons.size() ? QMessageBox::ActionRole : QMessageBox::AcceptRole;
        buttons.push_back(box_->addButton(menuText(title), role));
    }
    box_->setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
    box_->setEscapeButton(buttons.back());
    QObject::connect(
        box_, &QMessageBox::finished, box_, [this, buttons, answered = next.answered, box = box_.data()] {
            const auto chosen = std::find(buttons.begin(), buttons.end(), box->clickedButton());
            const auto index = chosen == buttons.end() ? buttons.size() - 1
                                                       : static_cast<std::size_t>(chosen - buttons.begin());
            box_.clear();
            answered(index);
            showNext();
        });
    box_->open();
    QTimer::singleShot(
        0, box_, [this, box = box_.data()] { bringToUser_({static_cast<std::int64_t>(box->winId())}); });
}

}  // namespace ui
