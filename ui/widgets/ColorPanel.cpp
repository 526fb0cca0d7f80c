#include "ui/widgets/ColorPanel.h"

#include <QScreen>
#include <algorithm>
#include <array>
#include <utility>

namespace ui {

namespace {

// Where a window of that size, frame included, hides the least of the panel.
QPoint placeBeside(const QWidget& panel, QSize size) {
    const auto frame = panel.frameGeometry();
    const auto screen = panel.screen()->availableGeometry();
    const auto moved = [&](int x, int y) {
        return QPoint(
            std::clamp(x, screen.left(), std::max(screen.left(), screen.right() + 1 - size.width())),
            std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() + 1 - size.height())));
    };
    const std::array places = {
        moved(frame.right() + 1, frame.top()), moved(frame.left() - size.width(), frame.top()),
        moved(frame.left(), frame.bottom() + 1), moved(frame.left(), frame.top() - size.height())};
    return *std::ranges::min_element(places, {}, [&](QPoint place) {
        const auto hidden = QRect(place, size) & frame;
        return hidden.width() * hidden.height();
    });
}

}  // namespace

void ColorPanel::show(QWidget* owner, const QColor& color, std::function<void(const QColor&)> onChange) {
    delete dialog_.data();
    auto* panel = owner->window();
    dialog_ = new QColorDialog(color, panel);
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setOptions(QColorDialog::DontUseNativeDialog);
    dialog_->setWindowTitle(QStringLiteral("Colors"));
    QObject::connect(dialog_, &QColorDialog::currentColorChanged, owner,
                     [onChange](const QColor& chosen) { onChange(chosen); });
    QObject::connect(dialog_, &QDialog::rejected, owner,
                     [onChange = std::move(onChange), color] { onChange(color); });
    QObject::connect(owner, &QObject::destroyed, dialog_, &QObject::deleteLater);
    dialog_->move(placeBeside(*panel, dialog_->sizeHint() + panel->frameSize() - panel->size()));
    dialog_->show();
}

}  // namespace ui
