#pragma once

#include <QMenu>
#include <QPointer>
#include <functional>
#include <utility>
#include <vector>

#include "platform/Menus.h"
#include "platform/x11/connection/Atoms.h"

namespace ui {

// The menu of the status item: a list of rows, made anew at each opening.
class StatusMenu final : public QMenu {
  public:
    StatusMenu(const platform::x11::Atoms& atoms, std::function<std::vector<platform::MenuItem>()> rows);

    // Opens at the place, in screen coordinates of the toolkit, or as near to it as the screen lets.
    void open(const QPoint& place) { open(QRect(place, QSize(0, 0))); }
    // Opens below the item and to the right, or above and to the left where there is no room there.
    void open(const QRect& item);
    // Whether these are the keys of one of its rows.
    [[nodiscard]] bool uses(const QKeyEvent& pressed) const { return rowOf(pressed) != nullptr; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

  private:
    [[nodiscard]] QPoint placeBeside(const QRect& item) const;
    void rebuild();
    void keepWidth();
    QAction* addRow(const platform::MenuItem& row);
    void showAlternates(bool shown);
    [[nodiscard]] QAction* rowOf(const QKeyEvent& pressed) const;

    // Rows that take each other's place.
    struct Pair {
        QAction* usual = nullptr;
        QAction* alternate = nullptr;
    };

    const platform::x11::Atoms& atoms_;
    std::function<std::vector<platform::MenuItem>()> rows_;
    std::vector<Pair> alternates_;
    std::vector<std::pair<QList<QKeySequence>, QAction*>> keys_;
};

// The keys of a key equivalent as this desktop's users write them: "Ctrl+Q".
[[nodiscard]] QString keyText(const platform::KeyEquivalent& key);
// All keys that choose it, the written ones first.
[[nodiscard]] QList<QKeySequence> keySequences(const platform::KeyEquivalent& key);

}  // namespace ui
