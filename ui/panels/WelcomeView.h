#pragma once

#include <QWidget>
#include <vector>

#include "orvellos/panels/WelcomeForm.h"

class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace ui {

class PermissionRowView;

// The welcome window's content: two pages of one size under the same header.
class WelcomeView final : public QWidget {
  public:
    explicit WelcomeView(orvellos::WelcomeForm& form);

  private:
    using Action = void (orvellos::WelcomeForm::*)();

    void addHeader(QVBoxLayout& column);
    [[nodiscard]] QWidget* makeFeaturesPage();
    [[nodiscard]] QWidget* makePermissionsPage();
    [[nodiscard]] QPushButton* makeButton(std::string_view title, Action action);
    void showStep();

    orvellos::WelcomeForm& form_;
    QStackedWidget* pages_ = nullptr;
    std::vector<QPushButton*> defaultButtons_;  // one for each page
    std::vector<PermissionRowView*> rows_;
    platform::Subscription changes_;
};

}  // namespace ui
