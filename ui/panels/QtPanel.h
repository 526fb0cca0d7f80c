#pragma once

#include <QSize>
#include <QWidget>
#include <functional>
#include <optional>

#include "platform/Panels.h"

class QScreen;

namespace ui {

// The size of a panel's window. It grows with the system's font and with its content, and never beyond the
// screen.
struct PanelSize {
    QSize usual;
    QSize least;
    bool cutsContent = false;  // so it has to be scrolled
};

// The room of a screen, less the title bar. Null stands for a screen without bounds.
[[nodiscard]] QSize roomOn(const QScreen* screen);
[[nodiscard]] PanelSize panelSize(const platform::PanelShell& shell, const QWidget& content, QSize room);

// A panel's window. The desktop draws its title bar.
class QtPanel final : public QWidget {
  public:
    // Takes the content over. `willClose` is called once, when the panel leaves the screen. The focus
    // outlives the panel.
    QtPanel(const platform::PanelShell& shell, QWidget* content, const platform::WindowFocus& focus,
            std::function<void()> willClose);

    [[nodiscard]] platform::WindowNumber number() const;
    void makeKeyAndOrderFront();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void centerOnScreen();
    void pressButton();

    const bool isMovableByBackground_;
    QWidget* content_;
    const platform::WindowFocus& focus_;
    std::function<void()> willClose_;
    std::optional<QPoint> heldAt_;  // where the background was pressed, until it moves the panel
    bool isComing_ = false;         // shown, but not on the screen yet
};

}  // namespace ui
