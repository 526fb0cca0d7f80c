#pragma once

#include <QWidget>

#include "orvellos/permissions/PermissionRow.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace ui {

// A permission: whether it is granted, what it is for, and the buttons that fit.
class PermissionRowView final : public QWidget {
  public:
    explicit PermissionRowView(orvellos::PermissionRow row);

    void refresh();

  private:
    [[nodiscard]] QHBoxLayout* makeFirstLine();
    [[nodiscard]] QWidget* makeHint();
    using Action = void (orvellos::PermissionRow::*)() const;
    [[nodiscard]] QPushButton* makeButton(const std::string& title, Action action);

    orvellos::PermissionRow row_;
    std::vector<QWidget*> whenGranted_;
    std::vector<QWidget*> whenMissing_;
};

}  // namespace ui
