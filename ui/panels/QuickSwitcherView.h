#pragma once

#include <QPropertyAnimation>
#include <QWidget>

#include "orvellos/panels/QuickSwitcher.h"

class QLabel;
class QLineEdit;
class QListView;
class QStackedLayout;

namespace ui {

class SpaceRows;

// A search field above the Spaces that match its text. The field keeps the keyboard focus.
class QuickSwitcherView final : public QWidget {
  public:
    explicit QuickSwitcherView(orvellos::QuickSwitcher& switcher);

    bool eventFilter(QObject* object, QEvent* event) override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    [[nodiscard]] QWidget* makeSearch();
    [[nodiscard]] QWidget* makeList();
    [[nodiscard]] QWidget* makeEmptyState();
    void showRows();
    void showSelection(bool animated);

    orvellos::QuickSwitcher& switcher_;
    QLineEdit* field_ = nullptr;
    QListView* list_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QStackedLayout* stack_ = nullptr;
    SpaceRows* rows_ = nullptr;
    QPropertyAnimation scrolling_;
    platform::Subscription shownAgain_;
};

}  // namespace ui
