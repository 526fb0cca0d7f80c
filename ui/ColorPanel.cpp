#include "ui/ColorPanel.h"

namespace ui {

void ColorPanel::show(QWidget* owner, const QColor& color, std::function<void(const QColor&)> onChange) {
    close();
    dialog_ = new QColorDialog(color, owner->window());
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setOptions(QColorDialog::DontUseNativeDialog | QColorDialog::NoButtons);
    dialog_->setWindowTitle(QStringLiteral("Colors"));
    QObject::connect(dialog_, &QColorDialog::currentColorChanged, owner,
                     [onChange = std::move(onChange)](const QColor& chosen) { onChange(chosen); });
    QObject::connect(owner, &QObject::destroyed, dialog_, &QWidget::close);
    dialog_->show();
}

void ColorPanel::close() {
    if (dialog_) dialog_->close();
}

}  // namespace ui
