#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "orvellos/panels/EditTagsList.h"
#include "platform/x11/connection/Atoms.h"
#include "ui/widgets/ColorPanel.h"

class QLabel;
class QScrollArea;
class QToolButton;

namespace ui {

// The list of the user's tags.
class EditTagsView final : public QWidget {
  public:
    EditTagsView(orvellos::EditTagsList& list, ColorPanel& colorPanel, const platform::x11::Atoms& atoms);

    // As high as its rows, up to a bound.
    [[nodiscard]] QSize sizeHint() const override;
    bool eventFilter(QObject* object, QEvent* event) override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    using Row = orvellos::EditTagsList::Row;

    // What the rows were made for.
    struct Shown {
        std::vector<Row> rows;
        std::optional<orvellos::TagID> edited;
        bool operator==(const Shown&) const = default;
    };

    // Which part of which row has the keyboard.
    struct Focus {
        std::size_t row = 0;
        QString part;    // the object name of a widget; empty when none of the rows has the keyboard
        int cursor = 0;  // in a text field
    };

    [[nodiscard]] Focus focusNow() const;
    void giveFocus(Focus focus);
    [[nodiscard]] Shown present() const;
    void follow();
    void fill();
    void fitPanel();
    [[nodiscard]] QWidget* makeTop();
    [[nodiscard]] QWidget* makeEmptyState() const;
    [[nodiscard]] QWidget* makeRow(const Row& row);
    [[nodiscard]] QWidget* makeEditor();
    [[nodiscard]] QToolButton* makePositionButton(const orvellos::Tag& tag);

    orvellos::EditTagsList& list_;
    ColorPanel& colorPanel_;
    const platform::x11::Atoms& atoms_;
    Shown shown_;
    QLabel* count_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    std::vector<QWidget*> rowWidgets_;
    int fittingHeight_ = 0;
    platform::Subscription changes_;
};

}  // namespace ui
