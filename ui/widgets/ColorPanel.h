#pragma once

#include <QColorDialog>
#include <QPointer>
#include <functional>

namespace ui {

// The one panel in which any colour is chosen, by hand or picked from the screen. A colour counts as soon as
// it is chosen, until the user cancels.
class ColorPanel {
  public:
    // Opens it beside the panel of `owner`, as far as the screen has room. `onChange` is called with each
    // colour that is chosen, and with the former one when the user cancels, until it is opened for another,
    // or the owner goes.
    void show(QWidget* owner, const QColor& color, std::function<void(const QColor&)> onChange);
    [[nodiscard]] bool isVisible() const { return dialog_ && dialog_->isVisible(); }

  private:
    QPointer<QColorDialog> dialog_;
};

}  // namespace ui
