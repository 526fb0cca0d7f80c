#pragma once

#include <QColorDialog>
#include <QPointer>
#include <functional>

namespace ui {

// The one panel in which any colour is chosen, by hand or picked from the screen. It has no button to accept:
// a colour counts as soon as it is chosen.
class ColorPanel {
  public:
    // Opens it, above the panel of `owner`. `onChange` is called with each colour that is chosen, until it is
    // opened for another, or closed, which happens when the owner goes too.
    void show(QWidget* owner, const QColor& color, std::function<void(const QColor&)> onChange);
    void close();
    [[nodiscard]] bool isVisible() const { return dialog_ && dialog_->isVisible(); }

  private:
    QPointer<QColorDialog> dialog_;
};

}  // namespace ui
