#pragma once

#include <QWidget>

#include "orvellos/UndoToast.h"

namespace ui {

// The toast's capsule.
class QtToast final : public QWidget {
  public:
    explicit QtToast(const orvellos::UndoToastView& view);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace ui
