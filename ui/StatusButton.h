#pragma once

#include <QAbstractButton>
#include <functional>
#include <optional>

#include "platform/StatusItem.h"

namespace ui {

// The status item as a window: the icon, and beside it, where there is room, the title. A press of either
// mouse button asks for the menu.
class StatusButton final : public QAbstractButton {
  public:
    enum class Place { Tray, Screen };
    StatusButton(Place place, std::function<void()> menuRequested);

    void setTitle(const platform::StatusTitle& title);
    // What is behind the icon in a tray; without it the tray shows through.
    void setGround(const std::optional<QColor>& ground);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    [[nodiscard]] QFont titleFont() const;
    void paintTitle(QPainter& painter) const;

    const Place place_;
    std::function<void()> menuRequested_;
    platform::StatusTitle title_;
    std::optional<QColor> ground_;
};

// The title in words, for tooltips: "Mail", "Tags hidden for screen-share", or both.
[[nodiscard]] QString titleText(const platform::StatusTitle& title);

}  // namespace ui
