#pragma once

#include <QWidget>
#include <functional>

#include "orvellos/panels/Toasts.h"
#include "platform/x11/connection/Atoms.h"

class QToolButton;

namespace ui {

// The toast's capsule. With a compositor a soft shadow is around it; without one the window is cut to the
// capsule and painted all over, so that no edge is mixed with black.
class QtToast final : public QWidget {
  public:
    // As if there were no compositor.
    QtToast(const orvellos::UndoToastView& view, const platform::x11::Atoms& atoms);

    void setComposited(bool isComposited);
    // Where in the window the capsule is, in the toolkit's points.
    [[nodiscard]] QRect capsule() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] QToolButton* makeButton(std::function<void()> undo) const;
    void cutOut();
    void paintShadow(QPainter& painter) const;

    int margin_ = 0;  // around the capsule, for the shadow
};

}  // namespace ui
