#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "orvellos/panels/SettingsForm.h"

class QScrollArea;
class QVBoxLayout;

namespace ui {

// The settings window's content: its sections, one below the other. It follows settings that change
// elsewhere.
class SettingsView final : public QWidget {
  public:
    explicit SettingsView(orvellos::SettingsForm& form);

  private:
    void add(const orvellos::PickerRow& row);
    void add(const orvellos::ToggleRow& row);
    void add(const orvellos::GroupTitle& row);
    void add(const orvellos::TextRow& row);
    void add(const orvellos::ShortcutRow& row);
    void add(const orvellos::PermissionRow& row);
    void add(const orvellos::WarningRow& row);
    void add(const orvellos::ButtonsRow& row);
    void addControl(const std::string& title, QWidget* control, const std::string& footnote);
    void refresh() const;

    QScrollArea* scroll_;
    QVBoxLayout* column_ = nullptr;
    std::vector<std::function<void()>> refreshers_;
    platform::Subscription changes_;
    std::vector<platform::Subscription> recorders_;
};

}  // namespace ui
