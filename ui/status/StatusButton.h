#pragma once

#include <QAbstractButton>
#include <functional>

#include "platform/Menus.h"
#include "platform/x11/connection/Atoms.h"
#include "ui/status/StatusButtonPlace.h"

namespace ui {

// The status item as a window of its own on the screen: the icon, and beside it the title. A click with
// either mouse button asks for the menu; the first one drags it to another place.
class StatusButton final : public QAbstractButton {
  public:
    struct Services {
        const platform::x11::Atoms& atoms;
        const platform::Screens& screens;
        StatusButtonPlace& place;
    };
    StatusButton(Services services, std::function<void()> menuRequested);

    void setTitle(const platform::StatusTitle& title);
    // Goes to its place, unless the user drags it.
    void settle();
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    [[nodiscard]] QFont titleFont() const;
    void paintTitle(QPainter& painter) const;
    void drop(const QPoint& place);

    Services services_;
    std::function<void()> menuRequested_;
    platform::StatusTitle title_;
    QPoint pressedAt_;
    QPoint heldAt_;  // the same in the button
    bool isDragged_ = false;
};

}  // namespace ui
