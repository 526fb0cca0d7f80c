#pragma once

#include <QWidget>

#include "orvellos/panels/CreateTagForm.h"
#include "ui/widgets/ColorPanel.h"

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace ui {

// The form for a new tag.
class CreateTagView final : public QWidget {
  public:
    CreateTagView(orvellos::CreateTagForm& form, ColorPanel& colorPanel);

  private:
    [[nodiscard]] QWidget* makeField();
    [[nodiscard]] QWidget* makeColors(ColorPanel& colorPanel);
    [[nodiscard]] QHBoxLayout* makeButtons();

    orvellos::CreateTagForm& form_;
    QLineEdit* field_ = nullptr;
    QPushButton* create_ = nullptr;
};

}  // namespace ui
