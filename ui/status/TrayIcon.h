#pragma once

#include <QWidget>
#include <optional>

#include "platform/Menus.h"
#include "platform/RunLoop.h"
#include "platform/x11/tray/SystemTray.h"

namespace ui {

// The status item as a window inside the tray that there is when it is made. It ends with that tray. A press
// of either mouse button asks for the menu.
class TrayIcon final : public QWidget {
  public:
    struct Services {
        platform::RunLoop& runLoop;
        platform::x11::SystemTray& tray;
    };
    class Owner {
      public:
        virtual ~Owner() = default;
        // The tray has taken the icon in, however late, or let it go.
        virtual void trayHasChanged(bool isTaken) = 0;
        virtual void trayMenuRequested() = 0;
    };
    TrayIcon(Services services, Owner& owner);

    void setTitle(const platform::StatusTitle& title);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void dock();
    void hasMoved(bool isTaken);
    void lookAtGround(platform::Duration pause);

    Services services_;
    Owner& owner_;
    platform::StatusTitle title_;
    std::optional<QColor> ground_;  // the colour behind the icon, where it can be seen
    platform::Subscription docking_;
    platform::Duration patience_;
    platform::Timer askingAgain_;
    platform::Timer looking_;
};

}  // namespace ui
