#pragma once

#include <QCheckBox>

namespace ui {

// An on-off switch, drawn as a knob in a track, without a text of its own. Its edge is room for the mark of
// the keyboard.
class Switch final : public QCheckBox {
  public:
    explicit Switch(const QString& name) {
        setAccessibleName(name);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    [[nodiscard]] bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ui
